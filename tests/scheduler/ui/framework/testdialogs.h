// The numbers of the dialogs that the framework's tests are made of. The resource compiler reads them, too.
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
#define IDC_CUT_LABEL 1015

#define IDD_CENTRED 201

// Pages of one edit each.
#define IDD_FIRST_PAGE 202
#define IDD_SECOND_PAGE 203

// The same in a larger font, and in a smaller one.
#define IDD_LARGE_PAGE 204
#define IDD_SMALL_PAGE 205

// Texts: a short one, and ones that end just before, at and behind the length that is read at once.
#define IDS_SHORT 500
#define IDS_BEFORE 501
#define IDS_AT 502
#define IDS_BEHIND 503
#define IDS_LONG 504
