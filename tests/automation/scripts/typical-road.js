// SPDX-License-Identifier: MIT
// A day with the catalogue, without a window: products come from a file, are looked through, one gets another
// price, and the next session finds it.
var host = new ActiveXObject("KstneditTests.Host");
host.InstallPath = Arg(1);
host.DBSubdirName = "Base";

var PF_RowID = 0, PF_UniqueID = 1, PF_Name = 3, PF_PartNum = 5, PF_UnitPrice = 6, PF_DirtySync = 9;

var files = new ActiveXObject("Scripting.FileSystemObject");
files.CreateFolder(Arg(1) + "\\Base");
var source = Arg(1) + "\\products.csv";
var target = Arg(1) + "\\export.csv";

function open() {
    return new ActiveXObject("KestrinProductEditor.ProductLkpMgr");
}

function names() {
    var text = "";
    for (store.MoveFirst(); !store.EOF(); store.MoveNext())
        text += store.Fields(PF_Name) + " ";
    return text;
}

// The catalogue is empty at first. The file's columns are 1 name, 0 part number, 2 price; there is no note.
var store = open();
Equal(0, store.Count, "products at first");
WriteText(source, "Part,Product,Price\r\nN-1,Nut,0.05\r\nB-1,Bolt,\"$1,200.00\"\r\nH-1,Hinge,on demand\r\n");
store.CSVProductImport([source, [1, 0, 2, -1], 1, 0]);
Equal("Bolt Nut ", names(), "imported");
Equal(true, store.SessionIsDirty, "there is something to save");

// Edited by column, by whole product, and by addition.
var added = store.AddNew([0, "Washer", "", "W-1", 0.02, "thin"]);
store.Update([added, "Washer", "K", "W-2", 0.03, "thick"]);
Equal("W-2", store.Fields(PF_PartNum), "updated");
Equal(3, store.CurrentRecordIdx, "its position");
store.GotoNthProduct(1);
store.Fields(PF_UnitPrice) = 0.07;
store.Fields(PF_UniqueID) = 12;
var edited = store.Fields(PF_RowID);

// Released, the store saves; the engine releases what its collector finds.
store = null;
CollectGarbage();
store = open();
store.CancelUpdate = true;
Equal(true, store.CancelUpdate, "this one will not save");
Equal("Bolt Nut Washer ", names(), "opened again");
Equal(false, store.SessionIsDirty, "nothing to save");
store.FindRow(edited);
Equal(0.07, store.Fields(PF_UnitPrice), "price");
Equal(true, store.Fields(PF_DirtySync), "due for synchronisation");
store.MoveFirst();
store.FindRowBySyncID(12);
Equal(edited, store.Fields(PF_RowID), "found by its other identifier");
Equal(false, store.PartialFindByName("N"), "partial");
Equal(null, store.GetFindMatchesByName("none", false), "no name matches");
Equal(null, store.GetFindMatchesByPartNum("none", false), "no part number matches");

// Out and in again, in both forms.
store.CSVProductExport([target]);
Equal("\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n\"Bolt\",\"B-1\",\"$1,200.00\",\"\"\r\n" +
      "\"Nut\",\"N-1\",\"$0.07\",\"\"\r\n\"Washer\",\"W-2\",\"$0.03\",\"thick\"\r\n",
      ReadText(target), "the export");
store.BinaryProductExport(Arg(1) + "\\products.bin");
store.Delete(edited);
Equal("Bolt Washer ", names(), "deleted");
Equal(true, store.SessionIsDirty, "a deletion is a change");
store.DeleteAll();
Equal(true, store.BOF() && store.EOF(), "nothing is left");
store.BinaryProductImport(Arg(1) + "\\products.bin");
Equal("Bolt Nut Washer ", names(), "back again");
store.CancelUpdate = true;

// Marks from the current row on.
store.MoveFirst();
store.SetDirtySyncFlags(false);
store.MoveFirst();
store.SetDirtySessionFlags(false);
store.MoveLast();
Equal(false, store.Fields(PF_DirtySync), "not due any more");
store.MovePrevious();
Equal("Nut", store.Fields(PF_Name), "one back");

// By value a mark is not written back, but the product is added.
store.PrvCSVSetRowFields(["Rivet", "R-1"], [0, 1, -1, -1], false);
Equal("Rivet", store.Fields(PF_Name), "a line");

// The launchers take a store, or none.
var launchers = ["ProductImportDlg", "ProductExportDlg"];
for (var at = 0; at < launchers.length; ++at) {
    var launcher = new ActiveXObject("KestrinProductEditor." + launchers[at]);
    launcher.Init(store);
    launcher.Init(null);
    var number = 0;
    try {
        launcher.Init({ Count: 0 });
    } catch (error) {
        number = error.number;
    }
    Check(number != 0, "an object that is no store: " + launchers[at]);
}
var editDialog = new ActiveXObject("KestrinProductEditor.ProdLkpEditDlg");
editDialog.Show();
editDialog.Show([1, [2]]);
editDialog.Show(store);
Equal(4, store.Count, "nothing happened");
