' Fills a list with the nodes and links of a small repository, sorts, checks and selects by object.
' Under orvane-scripthost the list is a control in a window and raises events; under cscript it has
' no window and no events, and everything else is the same.

Set rep = CreateObject("OrvaneRepository.Repository")
rep.New
Set book = rep.MakeMetaNode("Book")
rep.MakeProperty book, "Year", "Long", "", "Long"
Set cites = rep.MakeMetaLink("cites", "Book", book)

Set trees = rep.MakeNode("b1", "Book", "On Trees")
trees.SetProperty "Year", 1968
Set graphs = rep.MakeNode("b2", "Book", "On Graphs")
graphs.SetProperty "Year", 1736
rep.MakeLink cites, trees, graphs, "c1", "builds on"

On Error Resume Next
Set list = Host.CreateControl("OrvaneControls.ListView", "Books", 10, 10, 300, 160)
hosted = (Err.Number = 0)
On Error GoTo 0
If Not hosted Then Set list = CreateObject("OrvaneControls.ListView")

list.Create
list.Checkboxes = True
list.AddColumn "Title", "Name", "2400"
list.SetList_Nodes book, True
Show "rows", list.GetItems.Count
Show "no row is selected", list.selection Is Nothing

Set list.selection = graphs
Show "selected", list.selection.name
For Each node In list.GetNonSelectedItems
  Show "not selected", node.name
Next

list.CheckAll
Show "checked", list.GetCheckedItems.Count

' A list follows a change of one object without being read again.
graphs.SetProperty "Name", "On Networks"
list.UpdateEntry graphs
list.DeleteEntry trees
Show "rows", list.GetItems.Count
list.AddEntry trees
Show "the last", list.GetItems.Item("b1").name

' An error of the library names the class.
On Error Resume Next
list.AddEntry trees
Show "twice", Err.Source
Err.Clear
list.SetList_Nodes Nothing, False
Show "no meta node", Err.Source
On Error GoTo 0

' What the user does is printed until the window is closed.
If hosted Then
  If WScript.Arguments.Count > 0 Then Host.Run
End If
list.Destroy

Sub Books_Click(key)
  Show "Click", key
End Sub

Sub Books_DblClick(key)
  Show "DblClick", key
  Host.Quit
End Sub

Sub Show(what, value)
  WScript.Echo what & ": " & value
End Sub
