// Identifiers of the dialogs and their controls.
#pragma once

#define IDD_REPORT 101
#define IDD_DATABASE 102

#define IDC_SUMMARY 1001
#define IDC_LIST 1002
#define IDC_DETAIL 1003
#define IDC_COPY 1004
#define IDC_AGAIN 1005
#define IDC_DATABASE 1006
#define IDC_CONNECTION 1007
