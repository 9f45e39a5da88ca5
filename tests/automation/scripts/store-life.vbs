' SPDX-License-Identifier: MIT
' The life of a store: from the host's settings to the file, and back into it at the release.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
Dim files : Set files = CreateObject("Scripting.FileSystemObject")
Dim catalogue : catalogue = files.BuildPath(Arg(1), "Base\corvprd2.cpd")
host.InstallPath = Arg(1)
host.DBSubdirName = "Base"
files.CreateFolder files.BuildPath(Arg(1), "Base")

Function NewStore
    Set NewStore = CreateObject("KestrinProductEditor.ProductLkpMgr")
End Function

Function CountInFile
    Dim store : Set store = NewStore
    store.CancelUpdate = True
    CountInFile = store.Count
End Function

Sub AddProduct(store, name)
    store.AddNew Array(0, name, "", "", CCur(0), "")
End Sub

Sub AMissingFileIsCreatedEmpty
    Dim store
    Check Not files.FileExists(catalogue), "there is no file at first"
    Set store = NewStore
    Check files.FileExists(catalogue), "creation makes the file"
    Equal 0, store.Count, "an empty catalogue"
    Equal False, store.SessionIsDirty, "a fresh store is clean"
    Equal False, store.CancelUpdate, "a fresh store will save"
    Equal True, store.BOF, "before the first row"
    Equal True, store.EOF, "after the last row"
End Sub

Sub ChangesReachTheFileAtTheRelease
    Dim store : Set store = NewStore
    Dim before : before = ReadHex(catalogue)
    AddProduct store, "Bolt"
    Equal before, ReadHex(catalogue), "the file while the store lives"
    Set store = Nothing
    Check before <> ReadHex(catalogue), "the release writes the file"
    Equal 1, CountInFile, "products in the file"
End Sub

Sub ACancelledUpdateLeavesTheFile
    Dim store : Set store = NewStore
    Dim before : before = ReadHex(catalogue)
    AddProduct store, "Nut"
    store.CancelUpdate = True
    Equal True, store.CancelUpdate, "the mark can be read"
    Equal 2, store.Count, "products in memory"
    Set store = Nothing
    Equal before, ReadHex(catalogue), "the file, byte for byte"
    Set store = NewStore
    store.CancelUpdate = True
    store.CancelUpdate = False
    Equal False, store.CancelUpdate, "the mark can be taken back"
    AddProduct store, "Nut"
    Set store = Nothing
    Equal 2, CountInFile, "saved after all"
End Sub

Sub RowsWithoutANameAreNotSaved
    Dim store : Set store = NewStore
    Equal 4, store.AddNew(Null), "its identifier"
    AddProduct store, "   "
    Equal 4, store.Count, "rows in memory"
    Set store = Nothing
    Equal 2, CountInFile, "rows in the file"
End Sub

Sub TheLastStoreReleasedWins
    Dim first : Set first = NewStore
    Dim second : Set second = NewStore
    AddProduct first, "Washer"
    AddProduct first, "Screw"
    AddProduct second, "Rivet"
    Equal 4, first.Count, "rows of the first"
    Equal 3, second.Count, "rows of the second"
    Set first = Nothing
    Equal 4, CountInFile, "after the first"
    Set second = Nothing
    Equal 3, CountInFile, "after the second"
End Sub

Sub AStoreLivesAsLongAsItsLastReference
    Dim store : Set store = NewStore
    Dim other : Set other = store
    AddProduct store, "Hinge"
    Set store = Nothing
    Equal 3, CountInFile, "with one reference left"
    Equal 4, other.Count, "the other reference works"
    Set other = Nothing
    Equal 4, CountInFile, "without any"
End Sub

' The host's configuration answers with its default member or one of three names.
Sub EachMemberOfTheConfigurationServes
    Dim member, store
    For Each member In Array("Value", "GetValue", "Item", "default")
        host.ConfigMembers = member
        Set store = NewStore
        store.CancelUpdate = True
        Equal 4, store.Count, "settings by " & member
        Set store = Nothing
        Equal 0, host.ConfigObjects, "no configuration is kept, by " & member
    Next
End Sub

' A script hears of every failed creation as 429; the host's trace hears what happened.
Sub IsRefused(folder, expected, text)
    Dim store, number
    host.DBSubdirName = folder
    host.Recording = True
    On Error Resume Next
    Set store = NewStore
    number = Err.Number
    On Error GoTo 0
    Equal 429, number, "number: " & text
    Equal True, IsEmpty(store), "no store: " & text
    Check InStr(host.Trace, vbLf & "Error " & expected & "|") > 0, "the trace: " & text & ": " & host.Trace
    host.Recording = False
    host.ClearTrace
    host.DBSubdirName = "Base"
End Sub

Sub ABrokenFileIsRefusedAndStays
    Dim broken : broken = files.BuildPath(Arg(1), "Broken\corvprd2.cpd")
    files.CreateFolder files.BuildPath(Arg(1), "Broken")
    WriteText broken, "no catalogue"
    IsRefused "Broken", 321, "no catalogue"
    Equal "no catalogue", ReadText(broken), "the file stays"
    IsRefused "Missing", 76, "no such folder"
    host.FailConfig 70
    IsRefused "Base", 70, "no settings"
    host.FailConfig 0
    Equal 4, CountInFile, "all is well again"
End Sub

AMissingFileIsCreatedEmpty
ChangesReachTheFileAtTheRelease
ACancelledUpdateLeavesTheFile
RowsWithoutANameAreNotSaved
TheLastStoreReleasedWins
AStoreLivesAsLongAsItsLastReference
EachMemberOfTheConfigurationServes
ABrokenFileIsRefusedAndStays
