' Fills a combo box with the nodes and links of a small repository, and selects by object.
' Under orvane-scripthost the combo box is a control in a window and raises events; under cscript it
' has no window and no events, and everything else is the same.

Set rep = CreateObject("OrvaneRepository.Repository")
rep.New
Set book = rep.MakeMetaNode("Book")
rep.MakeMetaNode "Person"
Set cites = rep.MakeMetaLink("cites", "Book", book)

Set trees = rep.MakeNode("b1", "Book", "On Trees")
Set graphs = rep.MakeNode("b2", "Book", "On Graphs")
rep.MakeLink cites, trees, graphs, "c1", "builds on"

On Error Resume Next
Set combo = Host.CreateControl("OrvaneControls.Combo", "Combo1", 10, 10, 240, 24)
hosted = (Err.Number = 0)
On Error GoTo 0
If Not hosted Then Set combo = CreateObject("OrvaneControls.Combo")

combo.Create
shown = "Name"
combo.SetList_MetaNodes rep, shown
Show "no row is current", combo.selection Is Nothing

combo.Clear
combo.SetList_Nodes book, "Name"
Set combo.selection = graphs
Show "selected node", combo.selection.name

combo.Clear
LinkItself = 1
combo.SetList_Outgoing trees, cites, shown, LinkItself
Set combo.selection = cites.Extension("c1")
Show "selected link", combo.selection.name

combo.SetBackGroundColor RGB(255, 255, 224)

' An error of the repository comes through as it is; one of the library names the class.
combo.Clear
On Error Resume Next
combo.SetList_Nodes book, "Colour"
Show "unknown property", Err.Source
Err.Clear
combo.SetList_Nodes book
Show "without a property", Err.Number <> 0
Err.Clear
combo.SetList_Nodes Nothing, "Name"
Show "no meta node", Err.Source
On Error GoTo 0

combo.Destroy

Sub Combo1_Click(key)
  Show "Click", key
End Sub

Sub Combo1_Change(key)
  Show "Change", key
End Sub

Sub Show(what, value)
  WScript.Echo what & ": " & value
End Sub
