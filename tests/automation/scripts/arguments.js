// SPDX-License-Identifier: MIT
// The arrays, numbers and texts of JScript: its arrays are objects of its own.
var host = new ActiveXObject("KstneditTests.Host");
host.InstallPath = Arg(1);
host.DBSubdirName = "";

var PF_RowID = 0, PF_UniqueID = 1, PF_Name = 3, PF_Key = 4, PF_PartNum = 5, PF_UnitPrice = 6, PF_Note = 7;

var store = new ActiveXObject("KestrinProductEditor.ProductLkpMgr");
store.CancelUpdate = true;

function isBolt(text) {
    Equal("Bolt", store.Fields(PF_Name), "name: " + text);
    Equal("K", store.Fields(PF_Key), "key: " + text);
    Equal("B-1", store.Fields(PF_PartNum), "part number: " + text);
    Equal(1.5, store.Fields(PF_UnitPrice), "price: " + text);
    Equal("note", store.Fields(PF_Note), "note: " + text);
    store.DeleteAll();
}

function aProductIsAnyArray() {
    store.AddNew([0, "Bolt", "K", "B-1", 1.5, "note"]);
    isBolt("a literal");
    store.AddNew(new Array(0, "Bolt", "K", "B-1", "$1.50", "note"));
    isBolt("an array");
    var growing = [];
    growing.push(0, "Bolt", "K", "B-1", 1.5, "note");
    store.AddNew(growing);
    isBolt("a growing array");
    store.AddNew([0, new String("Bolt"), "K", "B-1", new Number(1.5), "note"]);
    isBolt("texts and numbers that are objects");
    var dictionary = new ActiveXObject("Scripting.Dictionary");
    for (var at = 0; at < growing.length; ++at)
        dictionary.Add(at, growing[at]);
    store.AddNew(dictionary.Items());
    isBolt("items of a dictionary");
    store.AddNew({ length: 6, 0: 0, 1: "Bolt", 2: "K", 3: "B-1", 4: 1.5, 5: "note" });
    isBolt("an object with a length");
}

function holesAreEmpty() {
    var product = [0];
    product[5] = "note";
    store.AddNew(product);
    Equal("", store.Fields(PF_Name), "name");
    Equal(0, store.Fields(PF_UnitPrice), "price");
    Equal("note", store.Fields(PF_Note), "note");
    store.AddNew([0, undefined, undefined, undefined, undefined, undefined]);
    Equal("", store.Fields(PF_Name), "undefined is no text");
    store.AddNew(null);
    Equal("", store.Fields(PF_Name), "null is an empty product");
    store.DeleteAll();
}

function arraysHoldArrays() {
    var source = Arg(1) + "\\products.csv";
    WriteText(source, "a,7\r\nb,8\r\n");
    store.CSVProductImport([source, [0, 1, 1, -1], 0, 0]);
    Equal(2, store.Count, "products");
    store.MoveFirst();
    Equal("a", store.Fields(PF_Name), "name");
    Equal("7", store.Fields(PF_PartNum), "part number");
    Equal(7, store.Fields(PF_UnitPrice), "price");
    store.DeleteAll();
}

function numbersAndTexts() {
    store.AddNew(null);
    store.Fields(PF_UniqueID) = 3.0;
    Equal(3, store.Fields(PF_UniqueID), "a number");
    store.Fields(PF_UniqueID) = "4";
    Equal(4, store.Fields(PF_UniqueID), "a text");
    store.Fields(PF_Name) = 12;
    Equal("12", store.Fields(PF_Name), "a number as a text");
    store.Fields(PF_Name) = true;
    Equal("True", store.Fields(PF_Name), "a flag as a text");
    store.Fields("3") = "index";
    Equal("index", store.Fields("3"), "a text as an index");
    Equal(true, store.CancelUpdate, "a flag");
    Equal("boolean", typeof store.CancelUpdate, "kind of a flag");
    Equal("number", typeof store.Count, "kind of a count");
    Equal("string", typeof store.Fields(PF_Name), "kind of a name");
    store.DeleteAll();
}

function lettersOfEveryPlane() {
    // One in the code page, two beyond it, one outside the first plane.
    var text = "\u00E9\u0416\u5546\uD834\uDD1E";
    var row = store.AddNew([0, text, text, text, 0, text]);
    store.MoveFirst();
    store.FindRow(row);
    // The narrow columns hold what the code page has.
    Equal("\u00E9???", store.Fields(PF_Name), "name");
    Equal("\u00E9???", store.Fields(PF_Key), "key");
    Equal("\u00E9???", store.Fields(PF_PartNum), "part number");
    Equal(text, store.Fields(PF_Note), "note");
    store.DeleteAll();
}

// The number with which a call ends, 0 when it does not fail. The engine may leave the system's statuses for
// a wrong kind and a wrong count as they are.
function numberOf(call) {
    try {
        call();
    } catch (error) {
        switch (error.number >>> 0) {
        case 0x80020005: return 13;
        case 0x8002000E: return 450;
        default: return error.number & 0xFFFF;
        }
    }
    return 0;
}

function whatFitsNowhereIsRefused() {
    store.AddNew(null);
    var itself = [0, "a", "b", "c", 1, "d"];
    itself[1] = itself;
    Equal(13, numberOf(function () { store.AddNew(itself); }), "an array that holds itself");
    Equal(9, numberOf(function () { store.AddNew([0, "a"]); }), "two elements");
    Equal(13, numberOf(function () { store.AddNew("Bolt"); }), "a text");
    Equal(450, numberOf(function () { store.AddNew(); }), "no argument");
    Equal(450, numberOf(function () { store.AddNew(null, null); }), "two arguments");
    Equal(13, numberOf(function () { store.AddNew([0, ["a"], "b", "c", 1, "d"]); }), "an array as a name");
    Equal(6, numberOf(function () { store.AddNew([0, "a", "b", "c", NaN, "d"]); }), "no number as a price");
    Equal(13, numberOf(function () { store.FindRow("x"); }), "a text as an identifier");
    Equal(3265, numberOf(function () { store.Fields(10) = "x"; }), "a column that is not there");
    Equal(1, store.Count, "nothing was added");
}

aProductIsAnyArray();
holesAreEmpty();
arraysHoldArrays();
numbersAndTexts();
lettersOfEveryPlane();
whatFitsNowhereIsRefused();
