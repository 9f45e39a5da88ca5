' SPDX-License-Identifier: MIT
' Arguments that are written back: the three of PrvCSVSetRowFields, which adds the product of one split line.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_Name = 3
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

Sub ALineBecomesAProduct
    Dim columns : columns = Array("Bolt", "B-1", "$1,234.50", "zinc")
    Dim map : map = Array(0, 1, 2, 3)
    Dim isError : isError = True
    store.PrvCSVSetRowFields columns, map, isError
    Equal False, isError, "the mark is written back"
    Equal vbBoolean, VarType(isError), "its kind"
    Equal 1, store.Count, "products"
    Equal "Bolt", store.Fields(PF_Name), "name"
    Equal "B-1", store.Fields(PF_PartNum), "part number"
    Equal CCur("1234.5"), store.Fields(PF_UnitPrice), "price"
    Equal "zinc", store.Fields(PF_Note), "note"
    Equal "Bolt", columns(0), "the columns stay"
    Equal 3, UBound(columns), "all of them"
    Equal 2, map(2), "the map stays"
End Sub

' Gives the mark that is written back for these arguments.
Function MarkOf(columns, map)
    Dim isError : isError = False
    store.PrvCSVSetRowFields columns, map, isError
    MarkOf = isError
End Function

Sub AFailureIsAMark
    Dim before : before = store.Count
    Equal True, MarkOf(Null, Array(0, -1, -1, -1)), "a line without columns"
    Equal True, MarkOf(Array("a", "b"), Array(0, 3, -1, -1)), "a column that is not there"
    Equal True, MarkOf(Array("a", "b"), Array(0, -1, 1, -1)), "a text as a price"
    Equal True, MarkOf(Array("a"), Array(0, -1, -1)), "a map of three"
    Equal True, MarkOf(Array("a"), Null), "no map"
    Equal True, MarkOf(Empty, Empty), "nothing at all"
    Equal before, store.Count, "nothing was added"
    Equal False, MarkOf(Array("a"), Array(0, -1, -1, -1)), "a good line"
    Equal False, MarkOf(Array("a"), Array(-1, -1, -1, -1)), "no column is wanted"
    Equal before + 2, store.Count, "both were added"
End Sub

Sub ArraysOfEachMaking
    Dim columns(1), map(3), at, isError
    columns(0) = "fixed"
    columns(1) = "5"
    For at = 0 To 3
        map(at) = -1
    Next
    map(0) = 0
    map(2) = 1
    isError = True
    store.PrvCSVSetRowFields columns, map, isError
    Equal False, isError, "fixed arrays"
    Equal "fixed", store.Fields(PF_Name), "name"
    Equal 5, store.Fields(PF_UnitPrice), "price"
    Equal "fixed", columns(0), "the caller's columns"
    Equal 1, map(2), "the caller's map"
    isError = True
    store.PrvCSVSetRowFields Split("split,7", ","), map, isError
    Equal False, isError, "a split text"
    Equal "split", store.Fields(PF_Name), "name of a split text"
End Sub

' The mark may be of any kind that is a flag; it comes back as a Boolean.
Sub MarksOfEachKind
    Dim mark
    For Each mark In Array(True, False, 0, 1, "True", Empty)
        Dim given : given = mark
        store.PrvCSVSetRowFields Array("a"), Array(0, -1, -1, -1), given
        Equal False, given, "from a " & TypeName(mark)
    Next
    Dim marks(1)
    marks(1) = True
    store.PrvCSVSetRowFields Array("a"), Array(0, -1, -1, -1), marks(1)
    Equal False, marks(1), "an element of an array"
    ' A value that cannot be written back is taken all the same.
    Dim before : before = store.Count
    store.PrvCSVSetRowFields Array("a"), Array(0, -1, -1, -1), True
    Equal before + 1, store.Count, "a mark by value"
End Sub

Sub AMarkOfAWrongKindIsRefused
    Dim before : before = store.Count
    Dim mark : mark = "no flag"
    On Error Resume Next
    store.PrvCSVSetRowFields Array("a"), Array(0, -1, -1, -1), mark
    Dim number : number = Err.Number
    On Error GoTo 0
    Equal 13, number, "number"
    Equal "no flag", mark, "it stays"
    Equal before, store.Count, "nothing was added"
End Sub

ALineBecomesAProduct
AFailureIsAMark
ArraysOfEachMaking
MarksOfEachKind
AMarkOfAWrongKindIsRefused
