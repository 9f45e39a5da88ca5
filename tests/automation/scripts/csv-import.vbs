' SPDX-License-Identifier: MIT
' Reading comma-separated text: which column is which field, what is accepted, and what the result says.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_UniqueID = 1
Const PF_Status = 2
Const PF_Name = 3
Const PF_Key = 4
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7
Const PF_DirtySession = 8
Const PF_DirtySync = 9

Const HasTitles = 1
Const HasNoTitles = 0
Const Replaces = 0
Const Adds = 1

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True
Dim source : source = Arg(1) & "\products.csv"

' Imports a file of these lines and compares the counts of products and of refused lines.
Sub Import(lines, map, titles, adding, imported, rejected, text)
    Dim result
    WriteText source, lines
    result = store.CSVProductImport(Array(source, map, titles, adding))
    Equal 3, UBound(result), "size of the result: " & text
    Equal 0, result(0), "status: " & text
    Equal "", result(1), "description: " & text
    Equal imported, result(2), "imported: " & text
    Equal rejected, result(3), "rejected: " & text
    Equal True, store.EOF, "the cursor stands at the end: " & text
End Sub

Sub IsProduct(name, partNum, price, note, text)
    Equal name, store.Fields(PF_Name), "name: " & text
    Equal partNum, store.Fields(PF_PartNum), "part number: " & text
    Equal price, store.Fields(PF_UnitPrice), "price: " & text
    Equal note, store.Fields(PF_Note), "note: " & text
    Equal "", store.Fields(PF_Key), "key: " & text
End Sub

Sub AnExportComesBack
    Import """Name"",""PartNum"",""UnitPrice"",""Note""" & vbCrLf & _
        """Widget"",""W-100"",""$1,234.50"",""Blue; large""" & vbCrLf, _
        Array(0, 1, 2, 3), HasTitles, Replaces, 1, 0, "a line as exported"
    store.MoveFirst
    IsProduct "Widget", "W-100", CCur("1234.5"), "Blue; large", "a line as exported"
End Sub

Sub ColumnsGoWhereTheMapSays
    Import "a,b,c" & vbCrLf, Array(1, -1, -1, 0), HasNoTitles, Replaces, 1, 0, "another order"
    store.MoveFirst
    IsProduct "b", "", CCur(0), "a", "another order"
    Import "a,b" & vbCrLf, Array(0, 3, -1, -1), HasNoTitles, Replaces, 0, 1, "a column that the line lacks"
    Equal 0, store.Count, "the catalogue was emptied"
    Import "a" & vbCrLf, Array(0, 0, -1, 0), HasNoTitles, Replaces, 1, 0, "one column for three fields"
    store.MoveFirst
    IsProduct "a", "a", CCur(0), "a", "one column for three fields"
    Import "a" & vbCrLf, Array(-1, -1, -1, -1), HasNoTitles, Replaces, 1, 0, "no column"
    store.MoveFirst
    IsProduct "", "", CCur(0), "", "no column"
End Sub

Sub QuotesGroupAndVanish
    Import "ab""c,d""e" & vbLf & """x"" ,""""" & vbCr & "y,"""" z""", Array(0, -1, -1, -1), _
        HasNoTitles, Replaces, 3, 0, "quotes, and every kind of line end"
    store.MoveFirst
    Equal "abc,de", store.Fields(PF_Name), "a comma in quotes"
    store.MoveNext
    Equal "x ", store.Fields(PF_Name), "blanks stay"
End Sub

Sub PricesAreReadInTheLocale
    Import "a,""$1,234.50""" & vbCrLf & "b,(5)" & vbCrLf & "c,-5" & vbCrLf & "d,4294967296" & vbCrLf & _
        "e,4294967295.99" & vbCrLf & "f,abc" & vbCrLf & "g," & vbCrLf & "h,1e3" & vbCrLf & _
        "i,""1,50""" & vbCrLf, _
        Array(0, -1, 1, -1), HasNoTitles, Replaces, 5, 4, "prices"
    store.MoveFirst
    IsProduct "a", "", CCur("1234.5"), "", "grouped"
    store.MoveNext
    IsProduct "b", "", CCur(0), "", "negative in parentheses"
    store.MoveNext
    IsProduct "c", "", CCur(0), "", "negative"
    store.MoveNext
    IsProduct "d", "", CCur(0), "", "beyond the largest"
    store.MoveNext
    IsProduct "e", "", CCur("4294967295.99"), "", "the largest"
End Sub

Sub TextsAreCutAndTildesRemoved
    Import String(300, "n") & ",A~B," & String(5000, "t") & vbCrLf, Array(0, 1, -1, 2), _
        HasNoTitles, Replaces, 1, 0, "long texts"
    store.MoveFirst
    IsProduct String(255, "n"), "AB", CCur(0), String(4095, "t"), "long texts"
End Sub

Sub EmptyLinesAreRefused
    Import "a" & vbCrLf & vbCrLf & "b" & vbCrLf, Array(0, -1, -1, -1), HasNoTitles, Replaces, 2, 1, _
        "in the middle"
    Import "", Array(0, -1, -1, -1), HasNoTitles, Replaces, 0, 0, "an empty file"
    Import "titles" & vbCrLf, Array(0, -1, -1, -1), HasTitles, Replaces, 0, 0, "titles alone"
    Equal 0, store.Count, "the catalogue was emptied"
End Sub

' Only the number 1 sets a flag.
Sub FlagsAreTheNumberOne
    Dim flag
    For Each flag In Array(1, CLng(1), CCur(1), 1.0)
        Import "t" & vbCrLf & "a" & vbCrLf, Array(0, -1, -1, -1), flag, Replaces, 1, 0, _
            "titles by " & TypeName(flag)
        Import "b" & vbCrLf, Array(0, -1, -1, -1), HasNoTitles, flag, 1, 0, "adding by " & TypeName(flag)
        Equal 2, store.Count, "products by " & TypeName(flag)
    Next
    For Each flag In Array(True, 0, 2, -1, Empty, Null)
        Import "t" & vbCrLf & "a" & vbCrLf, Array(0, -1, -1, -1), flag, flag, 2, 0, "not by " & TypeName(flag)
        Equal 2, store.Count, "products, not by " & TypeName(flag)
    Next
End Sub

' After an import every product is new to the synchronisation, those that were there as well.
Sub EveryProductIsDue
    Dim row : row = store.AddNew(Array(0, "old", "", "", CCur(0), ""))
    store.Fields(PF_UniqueID) = 5
    store.Fields(PF_Status) = 6
    store.MoveFirst
    store.SetDirtySyncFlags False
    Import "new" & vbCrLf, Array(0, -1, -1, -1), HasNoTitles, Adds, 1, 0, "an addition"
    store.FindRow row
    Equal 0, store.Fields(PF_UniqueID), "identifier"
    Equal 0, store.Fields(PF_Status), "status"
    Equal True, store.Fields(PF_DirtySession), "mark of the session"
    Equal True, store.Fields(PF_DirtySync), "mark for synchronisation"
    Equal row + 2, store.AddNew(Null), "identifiers go on"
End Sub

' A failure is told in the result; nothing is raised.
Sub IsRefused(parameters, number, text)
    Dim before : before = store.Count
    Dim result : result = store.CSVProductImport(parameters)
    Equal number, result(0), "status: " & text
    Check Len(result(1)) > 0, "description: " & text
    Equal 0, result(2), "imported: " & text
    Equal 0, result(3), "rejected: " & text
    Equal before, store.Count, "the catalogue stays: " & text
End Sub

Sub WrongParametersChangeNothing
    store.AddNew Array(0, "stays", "", "", CCur(0), "")
    WriteText source, "a,b" & vbCrLf
    IsRefused Array(Arg(1) & "\missing.csv", Array(0, -1, -1, -1), 0, 0), 53, "no such file"
    IsRefused Array(Arg(1) & "\missing\a.csv", Array(0, -1, -1, -1), 0, 0), 76, "no such folder"
    IsRefused Null, 13, "Null"
    IsRefused "a.csv", 13, "a text"
    IsRefused Array(), 9, "no element"
    IsRefused Array(source, Array(0, 1, 2, 3), 0), 9, "three elements"
    IsRefused Array(source, Null, 0, 0), 13, "no map"
    IsRefused Array(source, Array(0, 1, 2), 0, 0), 9, "a map of three"
    IsRefused Array(source, Array(0, 1, "x", 3), 0, 0), 13, "a map with a text"
    IsRefused Array(source, Array(0, 1, Null, 3), 0, 0), 13, "a map with Null"
End Sub

AnExportComesBack
ColumnsGoWhereTheMapSays
QuotesGroupAndVanish
PricesAreReadInTheLocale
TextsAreCutAndTildesRemoved
EmptyLinesAreRefused
FlagsAreTheNumberOne
EveryProductIsDue
WrongParametersChangeNothing
