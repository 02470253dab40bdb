// Resource and control ids of the character set dialogs. Included by the resource script: plain
// #defines. The control ids are those hosts know these dialogs by.
#pragma once

#define IDD_CHARSET_TABLE 190
#define IDD_CHARSET_ENTRY 191
#define IDD_ADD_LANGUAGE 192

// Edit Character Set: the table
#define IDC_CHARSET_LIST 1015
#define IDC_CHARSET_CAPTION 1108
#define IDC_CHARSET_EDIT 1343

// Edit Character Set: one entry
#define IDC_ENTRY_TITLE 1110
#define IDC_ENTRY_SOURCE 1076
#define IDC_ENTRY_HEX_LABEL 1116
#define IDC_ENTRY_HEX 1089
#define IDC_ENTRY_CHAR_LABEL 1117
#define IDC_ENTRY_CHAR 1112
#define IDC_ENTRY_ERROR 1115

// Add New language
#define IDC_LANGUAGE_NAME 1077
#define IDC_LANGUAGE_BASE 1118
#define IDC_LANGUAGE_NAME_LABEL 1190
#define IDC_LANGUAGE_BASE_LABEL 1191

#define IDC_CHARSET_HELP 9
