// Fills a list whose cells come from a callback object that is written in this script.
// Under orvane-scripthost the list is a control in a window and raises events; under cscript it has
// no window and no events, and everything else is the same.

var rep = new ActiveXObject("OrvaneRepository.Repository");
rep.New();
var book = rep.MakeMetaNode("Book");
rep.MakeProperty(book, "Year", "Long", "", "Long");
rep.MakeNode("b1", "Book", "On Trees").SetProperty("Year", 1968);
rep.MakeNode("b2", "Book", "On Graphs").SetProperty("Year", 1736);

var hosted = typeof Host != "undefined";
var list = hosted ? Host.CreateControl("OrvaneControls.ListView", "Books", 10, 10, 300, 160)
                  : new ActiveXObject("OrvaneControls.ListView");

// A list view calls the member for the kind of its rows once for each column.
var cells = new Object();
cells.items = new Array();
cells.ViewNode = function (columnNumber, columnDescription, listItem, node) {
    var value = node.GetProperty(columnDescription.Property);
    if (columnNumber == 0) {
        listItem.Text = value + "!";
        listItem.Bold = value == "On Graphs";
        cells.items.push(listItem);
    } else {
        listItem.SubItems(columnNumber) = "in " + value;
    }
};

list.Create();
list.AddColumn("Title", "Name", "2400");
list.AddColumn("Printed", "Year", "1500");
list.CallbackObject = cells;
list.SetList_Nodes(book, false);

for (var i = 0; i < cells.items.length; ++i) {
    var item = cells.items[i];
    show(item.Key, item.Text + ", " + item.SubItems(1) + ", bold " + item.Bold);
}

var nodes = new Enumerator(list.GetItems());
for (; !nodes.atEnd(); nodes.moveNext()) show("node", nodes.item().name);

// A callback that lacks the member for links.
var cites = rep.MakeMetaLink("cites", "Book", book);
rep.MakeLink(cites, book.Extension("b1"), book.Extension("b2"), "c1", "builds on");
try {
    list.SetList_Links(cites, false);
} catch (error) {
    show("no ViewLink", (error.number & 0xFFFF) == 438);
}

// What the user does is printed until the window is closed.
list.Clear();
list.SetList_Nodes(book, false);
if (hosted && WScript.Arguments.length > 0) Host.Run();
list.Destroy();

function Books_Click(key) {
    show("Click", key);
}

function Books_DblClick(key) {
    show("DblClick", key);
    Host.Quit();
}

function show(what, value) {
    WScript.Echo(what + ": " + value);
}
