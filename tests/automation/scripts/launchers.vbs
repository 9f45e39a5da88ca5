' SPDX-License-Identifier: MIT
' The launchers of the dialogs, as far as they go without a window.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

Class NoStore
    Public Count
End Class

Function NumberOfShow(parameters)
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor.ProdLkpEditDlg")
    On Error Resume Next
    launcher.Show parameters
    NumberOfShow = Err.Number
End Function

Sub TheLookupEditorTakesAnything
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor.ProdLkpEditDlg")
    Dim fixed(3)
    launcher.Show
    launcher.Show()
    Equal 0, NumberOfShow(Null), "Null"
    Equal 0, NumberOfShow(Empty), "Empty"
    Equal 0, NumberOfShow(Nothing), "Nothing"
    Equal 0, NumberOfShow(store), "an object"
    Equal 0, NumberOfShow(New NoStore), "an object of the script"
    Equal 0, NumberOfShow("text"), "a text"
    Equal 0, NumberOfShow(5), "a number"
    Equal 0, NumberOfShow(CCur("1.5")), "an amount"
    Equal 0, NumberOfShow(#12/31/1999#), "a date"
    Equal 0, NumberOfShow(True), "a flag"
    Equal 0, NumberOfShow(Array()), "an empty array"
    Equal 0, NumberOfShow(Array(1, Array(2, Nothing))), "an array of arrays"
    Equal 0, NumberOfShow(fixed), "a fixed array"
    On Error Resume Next
    launcher.Show 1, 2
    Equal 450, Err.Number, "two arguments"
End Sub

' Init is by reference: it takes a variable, and what is no variable.
Sub InitTakesAStore(className)
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor." & className)
    Dim stores(1), dictionary
    launcher.Init store
    Equal 0, store.Count, "the variable still holds the store: " & className
    launcher.Init (store)
    launcher.Init CreateObject("KestrinProductEditor.ProductLkpMgr")
    Set stores(1) = store
    launcher.Init stores(1)
    Set dictionary = CreateObject("Scripting.Dictionary")
    dictionary.Add "store", store
    launcher.Init dictionary("store")
    launcher.Init Nothing
    Dim none : Set none = Nothing
    launcher.Init none
    Check none Is Nothing, "Nothing stays Nothing: " & className
End Sub

Sub InitRefusesAllElse(className)
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor." & className)
    Dim wrong : Set wrong = New NoStore
    On Error Resume Next
    launcher.Init wrong
    Equal 13, Err.Number, "an object of the script: " & className
    Err.Clear
    launcher.Init launcher
    Equal 13, Err.Number, "another object of the component: " & className
    Err.Clear
    launcher.Init 5
    Equal 13, Err.Number, "a number: " & className
    Err.Clear
    launcher.Init "store"
    Equal 13, Err.Number, "a text: " & className
    Err.Clear
    launcher.Init
    Equal 450, Err.Number, "nothing: " & className
    Err.Clear
    launcher.Init store, store
    Equal 450, Err.Number, "two stores: " & className
    Err.Clear
    launcher.Show store
    Equal 450, Err.Number, "Show takes nothing: " & className
End Sub

' A launcher keeps its store alive until it has another.
Sub ALauncherHoldsItsStore(className)
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor." & className)
    Dim own : Set own = CreateObject("KestrinProductEditor.ProductLkpMgr")
    Dim catalogue : catalogue = Arg(1) & "\corvprd2.cpd"
    Dim before : before = ReadHex(catalogue)
    own.AddNew Array(0, className, "", "", CCur(0), "")
    launcher.Init own
    Set own = Nothing
    Equal before, ReadHex(catalogue), "not saved yet: " & className
    launcher.Init Nothing
    Check before <> ReadHex(catalogue), "saved with its last holder: " & className
End Sub

Sub ShowOfTheEditorTakesOneArgument
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor.ProductEditorDlg")
    On Error Resume Next
    launcher.Show
    Equal 450, Err.Number, "none"
    Err.Clear
    launcher.Show 1, 2
    Equal 450, Err.Number, "two"
    Err.Clear
    launcher.Init store
    Equal 438, Err.Number, "it has no Init"
End Sub

TheLookupEditorTakesAnything
Dim name
For Each name In Array("ProductImportDlg", "ProductExportDlg")
    InitTakesAStore name
    InitRefusesAllElse name
    ALauncherHoldsItsStore name
Next
ShowOfTheEditorTakesOneArgument
