// SPDX-License-Identifier: MIT
// Objects of a script hear how far an import or an export has come.
var host = new ActiveXObject("KstneditTests.Host");
host.InstallPath = Arg(1);
host.DBSubdirName = "";

var store = new ActiveXObject("KestrinProductEditor.ProductLkpMgr");
store.CancelUpdate = true;
var source = Arg(1) + "\\products.csv";

// The engine may be without arrays of the system's: receivers only count, and results are told by the store.
function Listener() {
    this.calls = 0;
    this.Progress = function () {
        ++this.calls;
    };
}

function importTwo() {
    WriteText(source, "Product1\r\nProduct2\r\n");
    store.CSVProductImport([source, [0, -1, -1, -1], 0, 0]);
    Equal(2, store.Count, "products");
}

function anObjectHears() {
    var listener = new Listener();
    store.SetNotifyCallback(listener);
    importTwo();
    Equal(2, listener.calls, "calls of an import");
    store.CSVProductExport([source]);
    Equal(4, listener.calls, "calls of both");
    store.ClearNotifyCallback();
    store.CSVProductExport([source]);
    Equal(4, listener.calls, "calls after its end");
}

function aLiteralHears() {
    var calls = 0;
    store.SetNotifyCallback({ Progress: function () { ++calls; } });
    CollectGarbage();
    importTwo();
    Equal(2, calls, "calls");
    store.SetNotifyCallback(null);
    importTwo();
    Equal(2, calls, "calls after null");
}

function aReceiverRaises() {
    var calls = 0;
    var number = 0;
    store.SetNotifyCallback({ Progress: function () { ++calls; throw new Error(513, "no more"); } });
    importTwo();
    Equal(2, calls, "an import goes on");
    try {
        store.CSVProductExport([source]);
    } catch (error) {
        number = error.number & 0xFFFF;
    }
    Equal(3, calls, "an export ends");
    // Engines differ in the number that they pass on.
    Check(number != 0, "with an error");
    store.ClearNotifyCallback();
}

function whatIsNoReceiverIsRefused() {
    var wrong = [{ Advance: function () {} }, 1, "Progress", true, store];
    for (var at = 0; at < wrong.length; ++at) {
        var number = 0;
        try {
            store.SetNotifyCallback(wrong[at]);
        } catch (error) {
            number = error.number & 0xFFFF;
        }
        // 13, or the system's status for it where the engine leaves that alone.
        Check(number == 13 || number == 5, "refused: " + at + " with " + number);
    }
}

anObjectHears();
aLiteralHears();
aReceiverRaises();
whatIsNoReceiverIsRefused();
