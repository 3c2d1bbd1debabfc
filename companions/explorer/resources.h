#pragma once

// Numbers of the program's resources and commands, also read by the resource compiler.
#define IDI_EXPLORER 1
#define IDM_MAIN 101
#define IDA_MAIN 102

#define ID_FILE_NEW 1001
#define ID_FILE_OPEN 1002
#define ID_FILE_IMPORT 1003
#define ID_FILE_SAVE_AS 1004
#define ID_FILE_EXIT 1005
#define ID_VIEW_REFRESH 1101
#define ID_VIEW_FOLLOW_LINK 1102
#define ID_VIEW_CLEAR_LOG 1103
#define ID_HELP_ABOUT 1201
