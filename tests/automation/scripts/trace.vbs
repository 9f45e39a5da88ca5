' SPDX-License-Identifier: MIT
' What the host's trace hears of each member, and what becomes of failures, the trace's own among them.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const Editor = "KestrinProductEditor.ProductLkpMgr::"
Const Manager = "KestrinProductMgr.ProductLkpMgr::"

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

' The lines since the last call of it, each with "|" behind it.
Function Heard
    Heard = Replace(host.Trace, vbLf, "|")
    host.ClearTrace
End Function

Sub Hears(context, text)
    Equal "Enter " & context & "|Exit " & context, Heard, text
End Sub

Sub HearsNothing(text)
    Equal "", Heard, text
End Sub

Sub EachTracedMemberTells
    Dim value, row
    host.Recording = True
    row = store.AddNew(Array(0, "Bolt", "", "", CCur(0), ""))
    Hears Manager & "AddNew", "AddNew"
    value = store.Count
    Hears Manager & "Count", "Count"
    value = store.Fields(3)
    Hears Manager & "Fields", "Fields, read"
    store.Fields(3) = "Nut"
    Hears Manager & "Fields", "Fields, written"
    value = store.Pack(row)
    Hears Editor & "Pack", "Pack"
    store.Update Array(row, "Nut", "", "", CCur(0), "")
    Hears Editor & "Update", "Update"
    value = store.BOF
    Hears Manager & "BOF", "BOF"
    value = store.EOF
    Hears Manager & "EOF", "EOF"
    store.MoveFirst
    Hears Manager & "MoveFirst", "MoveFirst"
    store.MoveLast
    Hears Manager & "MoveLast", "MoveLast"
    store.MoveNext
    Hears Manager & "MoveNext", "MoveNext"
    store.MovePrevious
    Hears Manager & "MovePrevious", "MovePrevious"
    store.FindRow row
    Hears Manager & "FindRow", "FindRow"
    store.FindRowBySyncID 0
    Hears Manager & "FindRowBySyncID", "FindRowBySyncID"
    store.SetDirtySyncFlags True
    Hears Manager & "SetDirtySyncFlags", "SetDirtySyncFlags"
    store.SetDirtySessionFlags True
    Hears Manager & "SetDirtySessionFlags", "SetDirtySessionFlags"
    store.CSVProductExport Array(Arg(1) & "\products.csv")
    Hears Editor & "CSVProductExport", "CSVProductExport"
    store.Delete row
    Hears Manager & "Delete", "Delete"
    store.DeleteAll
    Hears Manager & "DeleteAll", "DeleteAll"
    host.Recording = False
End Sub

Sub OtherMembersAreSilent
    Dim value, columns, map, isError
    store.AddNew Null
    host.Recording = True
    store.GotoNthProduct 0
    HearsNothing "GotoNthProduct"
    value = store.CurrentRecordIdx
    HearsNothing "CurrentRecordIdx"
    value = store.SessionIsDirty
    HearsNothing "SessionIsDirty"
    store.CancelUpdate = True
    value = store.CancelUpdate
    HearsNothing "CancelUpdate"
    value = store.GetFindMatchesByName("", True)
    value = store.GetFindMatchesByPartNum("", True)
    value = store.PartialFindByName("x")
    HearsNothing "match lists"
    store.SetNotifyCallback Nothing
    store.ClearNotifyCallback
    HearsNothing "receivers"
    Dim launcher : Set launcher = CreateObject("KestrinProductEditor.ProdLkpEditDlg")
    launcher.Show
    HearsNothing "the lookup's launcher"
    Set launcher = CreateObject("KestrinProductEditor.ProductImportDlg")
    launcher.Init store
    Set launcher = Nothing
    HearsNothing "Init"
    host.Recording = False
End Sub

' Members that use others let those tell as well.
Sub InnerOperationsTell
    host.Recording = True
    store.BinaryProductExport Arg(1) & "\products.bin"
    Equal "Enter " & Manager & "BinaryProductExport|Enter " & Manager & "SaveProductRS|Exit " & Manager & _
        "SaveProductRS|Exit " & Manager & "BinaryProductExport", Heard, "BinaryProductExport"
    store.BinaryProductImport Arg(1) & "\products.bin"
    Dim heardLines : heardLines = Heard
    Dim name
    For Each name In Array("BinaryProductImport", "LoadProductRS", "SortProductRS", _
                           "BinaryImportResetRstState", "GetLastRowID")
        Check InStr(heardLines & "|", "Enter " & Manager & name & "|") > 0, "entry of " & name
        Check InStr(heardLines & "|", "Exit " & Manager & name & "|") > 0, "exit of " & name
    Next
    host.Recording = False
    store.CancelUpdate = True
End Sub

Sub TheLifeOfAStoreTells
    Dim own, lines, name
    host.Recording = True
    Set own = CreateObject("KestrinProductEditor.ProductLkpMgr")
    lines = Heard
    For Each name In Array("Class_Initialize", "GetProductFilePath", "LoadProductRS", _
                           "SetDirtySessionFlags", "SortProductRS", "GetLastRowID")
        Check InStr(lines & "|", "Exit " & Manager & name & "|") > 0, "creation: " & name
    Next
    Equal 1, InStr(lines, "Enter " & Manager & "Class_Initialize|"), "the constructor is first"
    Set own = Nothing
    lines = Heard
    For Each name In Array("Class_Terminate", "ProductRemoveEmptyRows", "SaveProductRS")
        Check InStr(lines & "|", "Exit " & Manager & name & "|") > 0, "release: " & name
    Next
    Equal 1, InStr(lines, "Enter " & Manager & "Class_Terminate|"), "the destructor is first"
    host.Recording = False
End Sub

Sub AFailureIsTold
    Dim product, number, source, description
    host.Recording = True
    On Error Resume Next
    product = store.Pack(4711)
    number = Err.Number
    On Error GoTo 0
    host.Recording = False
    Equal "Enter " & Editor & "Pack|ErrNumber -> -2147220503|Error -2147220503|" & Editor & _
        "Pack|Product not found|ErrNumber -> -2147220503", Heard, "Pack"
    Equal -2147220503, number, "what the caller sees"
End Sub

' The number that the caller sees is the host's; its source and text stay what they were.
Sub TheHostNamesTheNumber
    Dim product, number, source, description
    host.AnswerErrNumber = 1234
    On Error Resume Next
    product = store.Pack(4711)
    number = Err.Number
    source = Err.Source
    description = Err.Description
    Err.Clear
    store.MoveLast
    store.MoveNext
    store.MoveNext
    Equal 1234, Err.Number, "of an error of the table"
    Check Len(Err.Description) > 0, "its text"
    On Error GoTo 0
    Equal 1234, number, "number"
    Equal Editor & "Pack", source, "source"
    Equal "Product not found", description, "description"
    ' An error never vanishes.
    host.AnswerErrNumber = 0
    On Error Resume Next
    store.MoveNext
    number = Err.Number
    On Error GoTo 0
    Equal 3021, number, "a host that answers 0"
    host.AnswerErrNumber = Null
End Sub

Function NumberOfCount
    Dim value
    On Error Resume Next
    value = store.Count
    NumberOfCount = Err.Number
End Function

Sub AFailingTraceIsAFailure
    host.FailTrace "TraceEnter", 0, 70
    Equal 70, NumberOfCount, "entry"
    host.FailTrace "TraceExit", 0, 71
    Equal 71, NumberOfCount, "exit"
    host.FailTrace "TraceEnter", 0, 70
    host.FailTrace "TraceError", 0, 72
    Equal 72, NumberOfCount, "error"
    host.FailTrace "TraceEnter", 0, 70
    host.FailTrace "TraceErrNumber", 0, 73
    Equal 73, NumberOfCount, "number"
    host.FailTrace "TraceEnter", 1, 70
    Equal 0, NumberOfCount, "a call before the failure"
    Equal 70, NumberOfCount, "the failure"
    Equal 0, NumberOfCount, "all is well again"
End Sub

Sub OneTraceServesTheThread
    Dim before : before = host.TraceObjects
    Dim own : Set own = CreateObject("KestrinProductEditor.ProductLkpMgr")
    own.CancelUpdate = True
    Set own = CreateObject("KestrinProductEditor.ProductImportDlg")
    Equal before, host.TraceObjects, "no other trace is made"
    Equal 1, before, "there is one"
End Sub

EachTracedMemberTells
OtherMembersAreSilent
InnerOperationsTell
TheLifeOfAStoreTells
AFailureIsTold
TheHostNamesTheNumber
AFailingTraceIsAFailure
OneTraceServesTheThread
