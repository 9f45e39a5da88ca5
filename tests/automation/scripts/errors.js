// SPDX-License-Identifier: MIT
// What a script catches after each kind of failure.
var host = new ActiveXObject("KstneditTests.Host");
host.InstallPath = Arg(1);
host.DBSubdirName = "";

var store = new ActiveXObject("KestrinProductEditor.ProductLkpMgr");
store.CancelUpdate = true;

// A call has to fail with this status, or with another one that an engine may make of it, and this
// description unless that is null.
function fails(call, status, otherStatus, description, text) {
    var caught = null;
    try {
        call();
    } catch (error) {
        caught = error;
    }
    Check(caught != null, "fails: " + text);
    if (caught == null)
        return;
    var found = caught.number >>> 0;
    Check(found == status || found == otherStatus, "status: " + text + ": " + found.toString(16));
    if (description != null)
        Equal(description, caught.message, "description: " + text);
}

function textsOfTheComponentItself() {
    fails(function () { store.Pack(5); }, 0x800403E9, 0x800403E9, "Product not found", "Pack");
    fails(function () { store.Update([5, "", "", "", 0, ""]); }, 0x800403E9, 0x800403E9,
          "Product not found", "Update");
    fails(function () { store.BinaryProductImport(Arg(1) + "\\missing"); }, 0x800403E9, 0x800403E9,
          "The path specified does not exist.", "BinaryProductImport");
}

function errorsOfTheTable() {
    store.AddNew(null);
    fails(function () { store.Fields(10) = 1; }, 0x800A0CC1, 0x800A0CC1, null, "no such column");
    fails(function () { store.Fields(3) = new Array(257).join("x"); }, 0x80040E21, 0x80040E21,
          null, "too long");
    fails(function () { store.AddNew([0, "a"]); }, 0x800A0009, 0x800A0009, null, "a short product");
    fails(function () { store.AddNew("a"); }, 0x800A000D, 0x800A000D, null, "no product");
    fails(function () { store.Delete(77); }, 0x800A0BCD, 0x800A0BCD, null, "no such product");
}

function wrongCalls() {
    fails(function () { store.FindRow("x"); }, 0x80020005, 0x800A000D, null, "a wrong kind");
    fails(function () { store.FindRow(); }, 0x8002000E, 0x800A01C2, null, "a wrong count");
    fails(function () { store.Frobnicate(); }, 0x80020006, 0x800A01B6, null, "a wrong name");
    fails(function () { return new ActiveXObject("KestrinProductEditor.IProcessProgress"); },
          0x800401F3, 0x800A01AD, null, "no class");
    Equal(1, store.Count, "nothing was done");
}

textsOfTheComponentItself();
errorsOfTheTable();
wrongCalls();
