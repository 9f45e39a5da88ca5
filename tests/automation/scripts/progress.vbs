' SPDX-License-Identifier: MIT
' Objects of a script hear how far an import or an export has come.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_Name = 3

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True
Dim source : source = Arg(1) & "\products.csv"

' Writes down what it is told.
Class Listener
    Public Calls
    Public Fractions
    Public Counts
    Public Sub Progress(values)
        Calls = Calls + 1
        Fractions = Fractions & values(0) & " "
        If UBound(values) > 0 Then Counts = Counts & values(1) & " "
        Equal 0, LBound(values), "lower bound"
        Equal vbDouble, VarType(values(0)), "kind of the fraction"
    End Sub
End Class

' Reads, changes and disturbs the store in the middle of its work.
Class Meddler
    Public Names
    Public Sub Progress(values)
        store.MoveFirst
        Names = Names & store.Fields(PF_Name) & " "
        store.MoveLast
        values(0) = 99
    End Sub
End Class

Class Failing
    Public Calls
    Public Sub Progress(values)
        Calls = Calls + 1
        Err.Raise 513, "the receiver", "no more"
    End Sub
End Class

' Takes itself out at the first call.
Class Leaving
    Public Calls
    Public Sub Progress(values)
        Calls = Calls + 1
        store.ClearNotifyCallback
    End Sub
End Class

Class WithoutProgress
    Public Sub Advance(values)
    End Sub
End Class

Function ImportFour
    Dim result
    WriteText source, "Product1" & vbCrLf & "Product2" & vbCrLf & "Product3" & vbCrLf & "Product4" & vbCrLf
    result = store.CSVProductImport(Array(source, Array(0, -1, -1, -1), 0, 0))
    Equal 0, result(0), "status of the import"
    Equal 4, store.Count, "products"
    ImportFour = result(2)
End Function

Sub AnImportTellsLineByLine
    Dim listener : Set listener = New Listener
    store.SetNotifyCallback listener
    Equal 4, ImportFour, "imported"
    Equal 4, listener.Calls, "calls"
    Equal "0.25 0.5 0.75 1 ", listener.Fractions, "fractions"
    Equal "0 1 2 3 ", listener.Counts, "products so far"
End Sub

Sub AnExportTellsRowByRow
    Dim listener : Set listener = New Listener
    store.SetNotifyCallback listener
    store.CSVProductExport Array(source)
    Equal 4, listener.Calls, "calls"
    Equal "0.25 0.5 0.75 1 ", listener.Fractions, "fractions"
    Equal Empty, listener.Counts, "nothing but the fraction"
End Sub

Sub AnEmptyExportTellsNothing
    Dim listener : Set listener = New Listener
    store.DeleteAll
    store.SetNotifyCallback listener
    store.CSVProductExport Array(source)
    Equal Empty, listener.Calls, "calls"
End Sub

Sub TheLatestReceiverHears
    Dim first : Set first = New Listener
    Dim second : Set second = New Listener
    store.SetNotifyCallback first
    store.SetNotifyCallback second
    Equal 4, ImportFour, "imported"
    Equal Empty, first.Calls, "calls of the one that was replaced"
    Equal 4, second.Calls, "calls of the latest"
    store.ClearNotifyCallback
    store.CSVProductExport Array(source)
    Equal 4, second.Calls, "calls after its end"
    store.ClearNotifyCallback
    store.SetNotifyCallback second
    store.SetNotifyCallback Nothing
    store.CSVProductExport Array(source)
    Equal 4, second.Calls, "calls after Nothing"
End Sub

Sub AReceiverCannotDisturbTheWork
    Dim meddler : Set meddler = New Meddler
    Equal 4, ImportFour, "imported"
    store.SetNotifyCallback meddler
    store.CSVProductExport Array(source)
    store.ClearNotifyCallback
    Equal "Product1 Product1 Product1 Product1 ", meddler.Names, "what it saw"
    Equal 5, UBound(Split(ReadText(source), vbCrLf)), "lines of the file"
End Sub

Sub AnImportGoesOnWithoutItsReceiver
    Dim failing : Set failing = New Failing
    store.SetNotifyCallback failing
    Equal 4, ImportFour, "imported"
    Equal 4, failing.Calls, "calls"
    store.ClearNotifyCallback
End Sub

Sub AnExportEndsWithItsReceiver
    Dim failing : Set failing = New Failing
    store.SetNotifyCallback failing
    On Error Resume Next
    store.CSVProductExport Array(source)
    Dim number : number = Err.Number
    On Error GoTo 0
    Equal 513, number, "number"
    Equal 1, failing.Calls, "calls"
    Equal 2, UBound(Split(ReadText(source), vbCrLf)), "the lines before the failure stay"
    store.ClearNotifyCallback
    store.CSVProductExport Array(source)
    Equal 5, UBound(Split(ReadText(source), vbCrLf)), "without it the export ends well"
End Sub

Sub AReceiverMayLeave
    Dim leaving : Set leaving = New Leaving
    store.SetNotifyCallback leaving
    Equal 4, ImportFour, "imported"
    Equal 1, leaving.Calls, "calls"
End Sub

Sub WhatIsNoReceiverIsRefused
    Dim listener : Set listener = New Listener
    Dim wrong
    store.SetNotifyCallback listener
    On Error Resume Next
    store.SetNotifyCallback New WithoutProgress
    Equal 13, Err.Number, "an object without Progress"
    Err.Clear
    store.SetNotifyCallback store
    Equal 13, Err.Number, "an object of another kind"
    Err.Clear
    For Each wrong In Array(1, "Progress", True)
        store.SetNotifyCallback wrong
        Equal 13, Err.Number, "a " & TypeName(wrong)
        Err.Clear
    Next
    On Error GoTo 0
    Equal 4, ImportFour, "imported"
    Equal 4, listener.Calls, "the receiver stays"
    For Each wrong In Array(Empty, Null)
        store.SetNotifyCallback listener
        store.SetNotifyCallback wrong
        Equal 4, ImportFour, "imported"
        Equal 4, listener.Calls, TypeName(wrong) & " is no receiver"
    Next
End Sub

AnImportTellsLineByLine
AnExportTellsRowByRow
AnEmptyExportTellsNothing
TheLatestReceiverHears
AReceiverCannotDisturbTheWork
AnImportGoesOnWithoutItsReceiver
AnExportEndsWithItsReceiver
AReceiverMayLeave
WhatIsNoReceiverIsRefused
