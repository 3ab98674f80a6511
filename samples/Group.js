// Adds a group, renames it, and meets an error: cscript Group.js
// The library and the data layer must be registered (see README.md): a script has no manifest.
var database = new ActiveXObject("KorvaneData.Database");
var root = database.Open("sample.sqlite", "");
try
{
    database.AddSample(root);
}
catch (refused)
{
    // it is there already
}

function edit(operation, id, name)
{
    var command = new ActiveXObject("KorvaneDlg.EditGroups");
    command.Operation = operation; // 1 add, 2 delete, 3 change
    command.Root = root;
    command.GroupID = id;
    command.GroupName = name;
    command.Execute();
    return command.GroupID; // the new one after an addition
}

var id = edit(1, 0, "Boats");
edit(3, id, "Ships");
try
{
    edit(1, 0, "Ships");
}
catch (error)
{
    WScript.Echo("refused: " + error.description);
}
edit(2, id, "");
WScript.Echo("added, renamed and deleted: group " + id);
