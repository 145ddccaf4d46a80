// Resource numbers. The resource compiler reads this file, so it contains only comments and preprocessor
// directives. A number must be unique among resources of one type or controls of one window.
#pragma once

// Icons of the program, of the notification area and of the list's rows.
#define IDI_ACTIVE 100
#define IDI_SUSPENDED 130
#define IDI_ROW_RUNNING 131
#define IDI_ROW_WAITING 132
#define IDI_ROW_DISABLED 133
#define IDI_ROW_RESULT 134

// Menus. A context menu is the first submenu of its resource.
#define IDR_MAIN_MENU 100
#define IDR_ITEM_MENU 132
#define IDR_TRAY_MENU 133

#define IDR_ACCELERATORS 100

#define IDD_ABOUT 101
#define IDD_SCHEDULE_PAGE 132
#define IDD_PROJECT_PAGE 136
#define IDD_PREFERENCES 138

// Commands. A command's description is the string with its number.
#define IDM_PREFERENCES 138
#define IDM_ADD 143
#define IDM_EDIT 144
#define IDM_DELETE 145
#define IDM_RUN 146
#define IDM_SUSPEND 2007
#define IDM_TEST 2010
#define IDM_ABOUT 2011
#define IDM_EXIT 2012
#define IDM_HELP 2017
#define IDM_DISPLAY 2018
#define IDM_ENABLE 2019
#define IDM_OPEN 2021
#define IDM_CLOSE 2022

// Not a command: the description of IDM_ENABLE for an enabled entry.
#define IDS_DISABLE 2020

// Main window.
#define IDC_SCHEDULE_LIST 132

// Project page.
#define IDC_PROJECT_PATH 136
#define IDC_RUN_COMMAND 137
#define IDC_AUTOCONNECT_LABEL 1051
#define IDC_AUTOCONNECT 1041
#define IDC_TIME_LIMIT_LABEL 1049
#define IDC_TIME_LIMIT 1044
#define IDC_TIME_LIMIT_UNIT 1050
#define IDC_DISCONNECT 1042

// Schedule page: the kinds, in the order of ScheduleKind.
#define IDC_KIND_AFTER_PROJECT 1000
#define IDC_KIND_STARTUP 1001
#define IDC_KIND_HOURLY 1002
#define IDC_KIND_DAILY 1003
#define IDC_KIND_MONTHLY 1004
#define IDC_KIND_ONCE 1005

// Schedule page: the fields of each kind, in reading order. IDC_AFTER_PROJECT is always visible.
#define IDC_AFTER_PROJECT 1018

#define IDC_AFTER_DELAY_LABEL 1023
#define IDC_AFTER_DELAY 1028
#define IDC_AFTER_DELAY_UNIT 1025

#define IDC_STARTUP_DELAY_LABEL 1034
#define IDC_STARTUP_DELAY 1027
#define IDC_STARTUP_DELAY_UNIT 1029

#define IDC_HOURLY_MINUTE_LABEL 1033
#define IDC_HOURLY_MINUTE 1015
#define IDC_HOURLY_MINUTE_UNIT 1030

#define IDC_DAILY_TIME_LABEL 1035
#define IDC_DAILY_TIME 1019
#define IDC_DAILY_ON 1031
#define IDC_MONDAY 1006
#define IDC_TUESDAY 1007
#define IDC_WEDNESDAY 1008
#define IDC_THURSDAY 1009
#define IDC_FRIDAY 1010
#define IDC_SATURDAY 1011
#define IDC_SUNDAY 1012

#define IDC_MONTHLY_DAY_LABEL 1036
#define IDC_MONTHLY_DAY 1022
#define IDC_MONTHLY_TIME_LABEL 1032
#define IDC_MONTHLY_TIME 1024

#define IDC_ONCE_TIME_LABEL 1037
#define IDC_ONCE_TIME 1026

// Preferences.
#define IDC_AUTOSTART 1060
#define IDC_WAIT_FOR_FIRST 1000
#define IDC_RUN_BESIDE_FIRST 1001
#define IDC_WAIT_TIME 1052
