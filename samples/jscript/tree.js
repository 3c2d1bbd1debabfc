// Shows a small repository in both trees: one whose shape is described, and one that follows links and
// asks this script about every node.
// Under orvane-scripthost the trees are controls in a window and raise events; under cscript they have
// no window and no events: the second tree then stays empty, because nobody allows its nodes.

var rep = new ActiveXObject("OrvaneRepository.Repository");
rep.New();
var book = rep.MakeMetaNode("Book");
var person = rep.MakeMetaNode("Person");
var wrote = rep.MakeMetaLink("wrote", "Person", book);
var author = rep.MakeNode("p1", "Person", "An Author");
var trees = rep.MakeNode("b1", "Book", "On Trees");
var graphs = rep.MakeNode("b2", "Book", "On Graphs");
rep.MakeLink(wrote, author, trees, "w1", "first");
rep.MakeLink(wrote, author, graphs, "w2", "second");

var hosted = typeof Host != "undefined";
var shelf = hosted ? Host.CreateControl("OrvaneControls.TreeView", "Shelf", 10, 10, 240, 200)
                   : new ActiveXObject("OrvaneControls.TreeView");
var web = hosted ? Host.CreateControl("OrvaneControls.HierarchyTreeView", "Web", 260, 10, 240, 200)
                 : new ActiveXObject("OrvaneControls.HierarchyTreeView");

// The described tree: persons, and below each what they wrote.
shelf.Repository = rep;
shelf.Create();
var persons = shelf.GetRootNodeDescription().AddChild("Extension", "Person", "Name", "Folder", "p");
persons.AddChild("Folder", "", "Wrote", "Folder", "f").AddChild("Links", "wrote", "", "", "l");
show("described", shelf.GetRootNodeDescription().Children.Item("p").objectType);

// The tree that follows links.
web.Create();
web.AddRootNode(author);
if (hosted) {
    web.Expand(author);
    show("opened", web.SelectionInfo.key + " " + web.selection.name);
    show("its parent", web.ParentNode(web.GetInfoFromObject(graphs).key).repObject.name);
    web.Update(web.GetInfoFromObject(trees), "renamed", "");
    web.selection = trees;
    show("selected", web.selection.name);
} else {
    show("not allowed", web.GetNodeInfo("ID:1") == null);
}

// What the user does is printed until the window is closed.
if (hosted && WScript.Arguments.length > 0) Host.Run();
shelf.Destroy();
web.Clear();
web.Destroy();

function Web_AddingNode(nni) {
    show("asked about", nni.repObject.name + (nni.repLink ? " by " + nni.repLink.name : ""));
    nni.Allowed = true;
    nni.Caption = nni.repObject.name;
    nni.Image = "__Folder";
}

function Web_NodeDblClick(ni) {
    show("double-clicked", ni.repObject.name);
    Host.Quit();
}

function Shelf_NodeClick(ni) {
    show("clicked", ni.key);
}

function show(what, value) {
    WScript.Echo(what + ": " + value);
}
