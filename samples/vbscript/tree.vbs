' Shows a small repository in both trees: one whose shape is described, and one that follows links and
' asks this script about every node.
' Under orvane-scripthost the trees are controls in a window and raise events; under cscript they have
' no window and no events: the second tree then has folders only, because nobody allows its nodes.

Set rep = CreateObject("OrvaneRepository.Repository")
rep.New
Set book = rep.MakeMetaNode("Book")
Set cites = rep.MakeMetaLink("cites", "Book", book)
Set trees = rep.MakeNode("b1", "Book", "On Trees")
Set graphs = rep.MakeNode("b2", "Book", "On Graphs")
Set lists = rep.MakeNode("b3", "Book", "On Lists")
Set first = rep.MakeLink(cites, trees, graphs, "c1", "builds on")
rep.MakeLink cites, trees, lists, "c2", "mentions"

On Error Resume Next
Set bookTree = Host.CreateControl("OrvaneControls.TreeView", "Shelf", 10, 10, 240, 200)
hosted = (Err.Number = 0)
On Error GoTo 0
If hosted Then
  Set linkTree = Host.CreateControl("OrvaneControls.HierarchyTreeView", "Web", 260, 10, 240, 200)
Else
  Set bookTree = CreateObject("OrvaneControls.TreeView")
  Set linkTree = CreateObject("OrvaneControls.HierarchyTreeView")
End If

' The described tree: all books, and below each a folder with those that it cites.
Set bookTree.Repository = rep
bookTree.Create
Set books = bookTree.GetRootNodeDescription.AddChild("Extension", "Book", "Name", "Folder", "books")
Set folder = books.AddChild("Folder", "", "Cites", "Folder", "folder")
folder.AddChild "Links", "cites", "", "", "links"
Show "described", bookTree.GetRootNodeDescription.Children.Count
Show "the placeholder stands below", bookTree.ParentNode("ID:2").key

' The tree that follows links.
linkTree.Create
linkTree.withFolders = True
linkTree.LabelEdit = True
linkTree.AddExtension book
Show "the folder", linkTree.GetNodeInfo("ID:1").repObject.name
If hosted Then
  linkTree.Expand trees
  Show "opened", linkTree.selection.name
  Show "a link leads to", linkTree.GetInfoFromObject(first).repObject.name

  ' A link that is new in the repository gets its node, one that goes loses it.
  Set added = rep.MakeLink(cites, trees, trees, "c3", "is")
  linkTree.AddNode linkTree.GetInfoFromObject(trees), added
  Show "new below", linkTree.ParentNode(linkTree.GetInfoFromObject(added).key).repObject.name
  linkTree.RemoveLink added
  Show "gone", linkTree.GetInfoFromObject(added) Is Nothing
Else
  Show "nothing else", linkTree.GetInfoFromObject(trees) Is Nothing
End If

' What the user does is printed until the window is closed.
If hosted Then
  If WScript.Arguments.Count > 0 Then Host.Run
End If
bookTree.Destroy
linkTree.Clear
linkTree.Destroy

Sub Web_AddingNode(nni)
  If nni.NodeType = 1 Or nni.NodeType = 3 Then
    nni.Allowed = True
    nni.Caption = nni.repObject.name
  End If
End Sub

Sub Web_NodeRemoved(ni)
  Show "removed", ni.repLink.name
End Sub

Sub Web_AfterLabelEdit(Cancel, ni, newString)
  ni.repObject.SetProperty "Name", newString
  Show "renamed", ni.repObject.name
End Sub

Sub Web_NodeDblClick(ni)
  Host.Quit
End Sub

Sub Shelf_NodeClick(ni)
  Show "clicked", ni.key
End Sub

Sub Show(what, value)
  WScript.Echo what & ": " & value
End Sub
