// Resource and control ids of the property dialogs. Included by the resource script: plain
// #defines. The ids are those hosts know the dialog by.
#pragma once

#define IDD_SSL_CERTIFICATE 147

#define IDC_SSL_STORE_TYPE 1337
#define IDC_SSL_STORE_PROMPT 1386
#define IDC_SSL_STORE 1340
#define IDC_SSL_FILE_PROMPT 1385
#define IDC_SSL_FILE 1081
#define IDC_SSL_BROWSE 1344
#define IDC_SSL_PASSWORD 1084
#define IDC_SSL_CERTIFICATE 1154
#define IDC_SSL_STORE_TYPE_LABEL 1396
#define IDC_SSL_PASSWORD_LABEL 1397
#define IDC_SSL_CERTIFICATE_LABEL 1398
#define IDC_SSL_HELP 9
