// Resource ids of the framework's tests, also included by testdialogs.rc.
#pragma once

#define IDD_CONTROLS 200
#define IDC_LABEL 1000
#define IDC_TEXT 1001
#define IDC_PLAIN_LABEL 1002
#define IDC_SECOND_TEXT 1003
#define IDC_CHECK 1004
#define IDC_FIRST_CHOICE 1005
#define IDC_SECOND_CHOICE 1006
#define IDC_THIRD_CHOICE 1007
#define IDC_LIST_LABEL 1008
#define IDC_LIST 1009
#define IDC_NUMBER 1010
#define IDC_TIME 1011
#define IDC_DATE 1012
#define IDC_BROWSE_LABEL 1013
#define IDC_BROWSE 1014
#define IDC_TRUNCATED_LABEL 1015

#define IDD_CENTRED 201

#define IDD_FIRST_PAGE 202
#define IDD_SECOND_PAGE 203

// Twice as large as the first page in dialog units, in a larger and a smaller font.
#define IDD_LARGE_PAGE 204
#define IDD_SMALL_PAGE 205

// Texts for resourceText(): shorter than its first buffer of 256 characters, around that size, and longer.
#define IDS_SHORT 500
#define IDS_BELOW 501
#define IDS_AT 502
#define IDS_ABOVE 503
#define IDS_LONG 504
