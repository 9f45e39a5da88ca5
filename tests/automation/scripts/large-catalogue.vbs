' SPDX-License-Identifier: MIT
' A hundred thousand products: imported, saved, opened again, searched and exported as they came.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_Name = 3
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7
Const Products = 100000

Dim source : source = Arg(1) & "\source.csv"
Dim target : target = Arg(1) & "\target.csv"
Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")

' Counts, and sees that the fraction never goes back.
Class Counter
    Public Calls
    Public Latest
    Public Backwards
    Public Sub Progress(values)
        Calls = Calls + 1
        If values(0) < Latest Then Backwards = Backwards + 1
        Latest = values(0)
    End Sub
End Class

Sub MakeTheFile
    Dim files, file, number, amount
    Set files = CreateObject("Scripting.FileSystemObject")
    Set file = files.CreateTextFile(source)
    file.Write """Name"",""PartNum"",""UnitPrice"",""Note""" & vbCrLf
    For number = 0 To Products - 1
        amount = "$" & (number Mod 1000) & "." & Right("0" & (number Mod 100), 2)
        file.Write """Product " & Right("00000" & number, 6) & """,""P-" & number & """,""" & amount & _
            """,""note; " & number & """" & vbCrLf
    Next
    file.Close
End Sub

Sub AllAreImported
    Dim counter : Set counter = New Counter
    Dim result
    store.SetNotifyCallback counter
    result = store.CSVProductImport(Array(source, Array(0, 1, 2, 3), 1, 0))
    store.ClearNotifyCallback
    Equal 0, result(0), "status: " & result(1)
    Equal Products, result(2), "imported"
    Equal 0, result(3), "rejected"
    Equal Products, store.Count, "products"
    Equal Products, counter.Calls, "calls of the receiver"
    Equal Empty, counter.Backwards, "steps backwards"
    Check counter.Latest > 0.99 And counter.Latest <= 1, "the last fraction: " & counter.Latest
End Sub

Sub TheFileKeepsAll
    Set store = Nothing
    Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
    store.CancelUpdate = True
    Equal Products, store.Count, "products"
    store.MoveLast
    Equal Products, store.CurrentRecordIdx, "position of the last"
    Equal "Product 099999", store.Fields(PF_Name), "name of the last"
    store.GotoNthProduct 54321
    Equal "P-54321", store.Fields(PF_PartNum), "part number in the middle"
    Equal CCur("321.21"), store.Fields(PF_UnitPrice), "its price"
    Equal "note; 54321", store.Fields(PF_Note), "its note"
End Sub

Sub ListsAreAsLongAsNeeded
    Dim matches
    matches = store.GetFindMatchesByName("", True)
    Equal Products - 1, UBound(matches, 2), "all names"
    matches = store.GetFindMatchesByPartNum("p-777", False)
    Equal 110, UBound(matches, 2), "part numbers"
    Equal "P-777", matches(1, 0), "the first in name order"
End Sub

Sub TheExportIsWhatWasImported
    Dim counter : Set counter = New Counter
    store.SetNotifyCallback counter
    store.CSVProductExport Array(target)
    Equal Products, counter.Calls, "calls of the receiver"
    Equal Empty, counter.Backwards, "steps backwards"
    Equal 1, counter.Latest, "the last fraction"
    Check ReadText(source) = ReadText(target), "the file that was imported is the file that was exported"
    Equal Products + 1, UBound(Split(ReadText(target), vbCrLf)), "lines"
End Sub

MakeTheFile
AllAreImported
TheFileKeepsAll
ListsAreAsLongAsNeeded
TheExportIsWhatWasImported
