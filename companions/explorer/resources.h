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
#define ID_VIEW_CHECK_BOXES 1104
#define ID_HELP_ABOUT 1201
// One for each kind of tree: the first and the number of the kind.
#define ID_TREE_FIRST 1401
#define ID_TREE_DESCRIBED 1401
#define ID_TREE_HIERARCHY 1402
#define ID_TREE_HIERARCHY_WITH_FOLDERS 1403
#define ID_TREE_LAST 1403
#define ID_TREE_RENAME 1404
#define ID_TREE_REMOVE_LINK 1405
// One for each link that a drop could make.
#define ID_LINK_FIRST 1500
// One for each kind of list: the first and the number that the list view has for it.
#define ID_LIST_FIRST 1300
#define ID_LIST_META_NODES 1300
#define ID_LIST_META_LINKS 1301
#define ID_LIST_OUTGOING_META_LINKS 1302
#define ID_LIST_INCOMING_META_LINKS 1303
#define ID_LIST_NODES 1304
#define ID_LIST_LINKS 1305
#define ID_LIST_OUTGOING 1306
#define ID_LIST_INCOMING 1307
#define ID_LIST_META_PROPERTIES 1308
#define ID_LIST_LAST 1308
