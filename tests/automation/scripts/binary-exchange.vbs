' SPDX-License-Identifier: MIT
' The whole catalogue in a file of its own form, out and in again.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_RowID = 0
Const PF_UniqueID = 1
Const PF_Status = 2
Const PF_Name = 3
Const PF_DirtySession = 8
Const PF_DirtySync = 9

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
Dim target : target = Arg(1) & "\exchange.bin"

Sub Failed(number, source, description, text)
    Equal number, Err.Number, "number: " & text
    If source <> "" Then Equal source, Err.Source, "source: " & text
    If description <> "" Then Equal description, Err.Description, "description: " & text
    Err.Clear
End Sub

Sub AnExportChangesNothing
    Dim name
    For Each name In Array("C", "A", "B")
        store.AddNew Array(0, name, "key " & name, "part " & name, CCur("1.5"), "note " & name)
        store.Fields(PF_UniqueID) = 7
        store.Fields(PF_Status) = 8
    Next
    store.MoveFirst
    store.SetDirtySyncFlags False
    store.MoveFirst
    store.MoveNext
    store.BinaryProductExport target
    Equal "B", store.Fields(PF_Name), "the current row"
    Equal 7, store.Fields(PF_UniqueID), "its identifier"
    Equal False, store.Fields(PF_DirtySync), "its mark"
End Sub

Sub AnImportReplacesAndMarksAll
    Dim names
    store.DeleteAll
    store.AddNew Array(0, "gone", "", "", CCur(0), "")
    store.CancelUpdate = True
    store.BinaryProductImport target
    Equal False, store.CancelUpdate, "the release will save"
    Equal True, store.SessionIsDirty, "the session is dirty"
    Equal True, store.EOF, "the cursor stands at the end"
    Equal 3, store.Count, "products"
    store.MoveFirst
    Do Until store.EOF
        names = names & store.Fields(PF_Name) & store.Fields(PF_RowID)
        Equal 0, store.Fields(PF_UniqueID), "identifier"
        Equal 0, store.Fields(PF_Status), "status"
        Equal True, store.Fields(PF_DirtySession), "mark of the session"
        Equal True, store.Fields(PF_DirtySync), "mark for synchronisation"
        store.MoveNext
    Loop
    Equal "A3B4C2", names, "names and row identifiers"
    Equal 5, store.AddNew(Null), "identifiers go on behind the imported ones"
    store.Delete 5
End Sub

Sub AProductComesBackWhole
    Dim product : product = store.Pack(2)
    Equal "C", product(1), "name"
    Equal "key C", product(2), "key"
    Equal "part C", product(3), "part number"
    Equal CCur("1.5"), product(4), "price"
    Equal "note C", product(5), "note"
End Sub

Sub TheCatalogueFileIsOfTheSameForm
    Set store = Nothing
    Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
    store.DeleteAll
    store.BinaryProductImport Arg(1) & "\corvprd2.cpd"
    Equal 3, store.Count, "products of the file"
End Sub

Sub AnEmptyCatalogueComesBackEmpty
    store.DeleteAll
    store.BinaryProductExport target
    store.AddNew Array(0, "x", "", "", CCur(0), "")
    store.BinaryProductImport target
    Equal 0, store.Count, "products"
    Equal 2, store.AddNew(Null), "identifiers begin anew"
End Sub

Sub WrongFilesAreRefused
    store.CancelUpdate = True
    On Error Resume Next
    store.BinaryProductImport Arg(1) & "\missing.bin"
    Failed -2147220503, "KestrinProductMgr.ProductLkpMgr::BinaryProductImport", _
        "The path specified does not exist.", "a missing file"
    Equal True, store.CancelUpdate, "nothing was done"
    WriteText target, "no catalogue"
    store.BinaryProductImport target
    Failed 321, "", "", "no catalogue"
    Equal 1, store.Count, "the rows stay"
    Equal False, store.CancelUpdate, "the release will save"
    store.BinaryProductExport Arg(1) & "\missing\exchange.bin"
    Failed 76, "", "", "no such folder"
    store.BinaryProductExport ""
    Check Err.Number <> 0, "no path"
    Err.Clear
    store.CancelUpdate = True
End Sub

AnExportChangesNothing
AnImportReplacesAndMarksAll
AProductComesBackWhole
TheCatalogueFileIsOfTheSameForm
AnEmptyCatalogueComesBackEmpty
WrongFilesAreRefused
