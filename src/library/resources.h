#pragma once

// Resource numbers, also read by the resource compiler. The toolbox bitmap of a control is 16
// by 16.
#define themeManifest 2
#define comboToolboxBitmap 101
#define listViewToolboxBitmap 102
#define treeViewToolboxBitmap 103
#define hierarchyTreeViewToolboxBitmap 104
