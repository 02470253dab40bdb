// Resource and control ids of the Macro Assistant. Included by the resource script: plain #defines.
#pragma once

#define IDD_MACRO_ASSIST 144

#define IDC_MACRO_TEXT 1080
#define IDC_MACRO_TEXT_CAPTION 1086
#define IDC_TOKEN_LIST 1016
#define IDC_TOKEN_TYPE 1215
#define IDC_INSERT_BEFORE 1346
#define IDC_INSERT_AFTER 1032
#define IDC_DELETE_TOKEN 1210
#define IDC_MOVE_UP 1203
#define IDC_MOVE_DOWN 1207
#define IDC_PANEL_MARKER 1211
#define IDC_MACRO_HELP 9

// Text panel
#define IDC_TEXT_PROMPT 1212
#define IDC_TEXT_EDIT 1101
// Character panel
#define IDC_CHAR_PROMPT 1213
#define IDC_CHAR_LIST 1335
#define IDC_HEX_PROMPT 1214
#define IDC_BYTE_LIST 1339
// Emulation key panel
#define IDC_EMKEY_PROMPT 1216
#define IDC_EMKEY_LIST 1152
#define IDC_EMKEY_WARNING 1348
// Function panel
#define IDC_FUNC_PROMPT 1349
#define IDC_FUNC_LIST 1156
#define IDC_PARAM_PROMPT1 1350
#define IDC_PARAM1 1102
#define IDC_PARAM_PROMPT2 1357
#define IDC_PARAM2 1104
#define IDC_PARAM_PROMPT3 1361
#define IDC_PARAM3 1107
// Classic function panel
#define IDC_CLASSIC_PROMPT 1351
#define IDC_CLASSIC_LIST 1158
#define IDC_CLASSIC_PARAM_PROMPT 1352
#define IDC_CLASSIC_PARAM 1109
#define IDC_DELIMITER_PROMPT 1353
#define IDC_DELIMITER 1111
// Condition panel
#define IDC_IDENT_PROMPT 1358
#define IDC_IDENT_LIST 1355
#define IDC_OPERATOR_PROMPT 1359
#define IDC_OPERATOR_LIST 1356
#define IDC_VALUE_PROMPT 1360
#define IDC_VALUE 1100
// Goto and label panel
#define IDC_LABEL_PROMPT 1354
#define IDC_LABEL 1114
