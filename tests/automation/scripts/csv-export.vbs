' SPDX-License-Identifier: MIT
' The comma-separated file that an export writes, letter by letter.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const Header = """Name"",""PartNum"",""UnitPrice"",""Note"""

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True
Dim target : target = Arg(1) & "\products.csv"

Sub AnEmptyCatalogueIsItsHeader
    store.CSVProductExport Array(target)
    Equal Header & vbCrLf, ReadText(target), "the header alone"
End Sub

Sub EachProductIsALine
    store.AddNew Array(0, "Widget", "K", "W-100", CCur("1234.5"), "Blue; large")
    store.AddNew Array(0, "Bolt, M6", "", "", CCur(0), "")
    store.AddNew Array(0, "He said ""hi""", "", "~", CCur("0.005"), _
        "a" & vbCrLf & "b" & vbLf & "c" & vbCr & "d")
    store.AddNew Array(0, "Discount", "", "", CCur("-1234567.891"), "")
    store.MoveFirst
    store.CSVProductExport Array(target)
    Equal Header & vbCrLf & _
        """Bolt, M6"","""",""$0.00"",""""" & vbCrLf & _
        """Discount"","""",""($1,234,567.89)"",""""" & vbCrLf & _
        """He said 'hi'"",""~"",""$0.01"",""a;b;c;d""" & vbCrLf & _
        """Widget"",""W-100"",""$1,234.50"",""Blue; large""" & vbCrLf, ReadText(target), "the file"
    Equal True, store.EOF, "the cursor stands at the end"
    Equal 4, store.Count, "the catalogue keeps its rows"
End Sub

Sub AnOlderFileIsReplaced
    WriteText target, String(100000, "x")
    store.DeleteAll
    store.CSVProductExport Array(target)
    Equal Header & vbCrLf, ReadText(target), "nothing is left of it"
End Sub

' The file is in the code page of the system.
Sub LettersAreInTheCodePage
    store.AddNew Array(0, "caf" & Chr(233) & " " & Chr(128), "", "", CCur(0), "")
    store.CSVProductExport Array(target)
    Check InStr(ReadHex(target), "22636166E9208022") > 0, "one byte for a letter"
End Sub

Sub IsRefused(parameters, number, text)
    On Error Resume Next
    store.CSVProductExport parameters
    Dim found : found = Err.Number
    On Error GoTo 0
    Equal number, found, text
End Sub

Sub AWrongTargetIsRefused
    IsRefused Array(Arg(1) & "\missing\products.csv"), 76, "no such folder"
    IsRefused Array(Arg(1)), 75, "a folder"
    IsRefused Array(), 9, "no element"
    IsRefused "products.csv", 13, "no array"
    IsRefused Null, 13, "Null"
    IsRefused Empty, 13, "Empty"
    IsRefused Array(Null), 13, "a path that is Null"
    Equal 1, store.Count, "the catalogue keeps its rows"
End Sub

Sub OtherElementsAreNotAsked
    store.DeleteAll
    store.CSVProductExport Array(target, "more", Null, 1)
    Equal Header & vbCrLf, ReadText(target), "more elements"
End Sub

AnEmptyCatalogueIsItsHeader
EachProductIsALine
AnOlderFileIsReplaced
LettersAreInTheCodePage
AWrongTargetIsRefused
OtherElementsAreNotAsked
