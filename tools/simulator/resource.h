// Numbers of the dialog's controls, shared with simulator.rc.
#pragma once

#define IDD_SIMULATOR 100

#define IDC_BANNER 101
#define IDC_KIND 102
#define IDC_PATIENT 103
#define IDC_PATIENT_ID 104
#define IDC_TITLE 105
#define IDC_CASE_ID 106
#define IDC_MESSAGE 107
#define IDC_KEY 108
#define IDC_USER_DEF_DATA 109
#define IDC_REQUEST_PATH 110
#define IDC_RESULT_PATH 111

#define IDC_ANSWER_CASE_ID 120
#define IDC_ANSWER_USER 121
#define IDC_SENT 122
#define IDC_CHANGED 123
#define IDC_WITHDRAWN 124
#define IDC_CANCELLED 125
#define IDC_DELETED 126
#define IDC_UNREADABLE 127
#define IDC_STATE 128
