// Resource and control ids of the classic key map dialogs. Included by the resource script: plain
// #defines. The ids are those hosts know these dialogs by.
#pragma once

#define IDD_KEYMAP_BYPHYS 106
#define IDD_KEYMAP_BYEMUL 107
#define IDD_KBD_ADVANCED 108
#define IDD_KBD_SELPKEY 109

#define IDC_PHYS_KEY 1000
#define IDC_SHIFT 1001
#define IDC_ALT 1002
#define IDC_CTRL 1003
#define IDC_ADVANCED 1004
#define IDC_MAP_EMKEY 1005
#define IDC_MAP_STRING 1007
#define IDC_MAP_GLOBAL 1008
#define IDC_MAP_NONE 1009
#define IDC_EM_KEY 1010
#define IDC_STRING 1011
#define IDC_PKEY_LIST 1013
#define IDC_ADD_PKEY 1017
#define IDC_REMOVE_PKEY 1018
#define IDC_LIST_BYPHYS 1019
#define IDC_NP_NUMERIC 1020
#define IDC_NP_CURSOR 1021
#define IDC_NP_NUMLOCK 1022
#define IDC_NP_SHIFT 1023
#define IDC_CL_NOCHANGE 1024
#define IDC_CL_ON 1025
#define IDC_CL_OFF 1026
#define IDC_CAPS_GROUP 1027
#define IDC_NUMPAD_GROUP 1028
#define IDC_LIST_BYEMUL 1035
#define IDC_GLOBAL_STRING 1036
#define IDC_FIELD_CAPTION 1037
#define IDC_PRESS_KEY 1342
#define IDC_KEY_ASSIST 1362
#define IDC_PHYS_KEY_LABEL 1038
#define IDC_MAPPED_GROUP 1039
#define IDC_EM_KEY_LABEL 1040
#define IDC_PKEY_LIST_LABEL 1041
#define IDC_KEYMAP_HELP 9
