' SPDX-License-Identifier: MIT
' Finding rows by identifier, and the lists of rows whose name or part number begins with a text.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_RowID = 0
Const PF_UniqueID = 1
Const PF_Name = 3

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

Sub AddProduct(name, partNum)
    store.AddNew Array(0, name, "", partNum, CCur(0), "")
End Sub

Sub AnEmptyTableHasNoMatches
    Equal Null, store.GetFindMatchesByName("", True), "all names"
    Equal Null, store.GetFindMatchesByPartNum("", True), "all part numbers"
    Equal False, store.PartialFindByName("x"), "partial"
End Sub

Sub MatchesAreATableOfColumnsAndRows
    Dim matches : matches = store.GetFindMatchesByName("bo", False)
    Equal vbArray + vbVariant, VarType(matches), "kind"
    Equal 0, LBound(matches, 1), "first column"
    Equal 1, UBound(matches, 1), "last column"
    Equal 0, LBound(matches, 2), "first row"
    Equal 1, UBound(matches, 2), "last row"
    Equal 3, matches(0, 0), "identifier of the first"
    Equal "Bolt", matches(1, 0), "name of the first"
    Equal 4, matches(0, 1), "identifier of the second"
    Equal "bolt cutter", matches(1, 1), "name of the second"
    Equal vbLong, VarType(matches(0, 0)), "kind of an identifier"
End Sub

Sub PartNumbersMatchInRowOrder
    Dim matches : matches = store.GetFindMatchesByPartNum("N-", False)
    Equal 1, UBound(matches, 2), "last row"
    Equal 4, matches(0, 0), "identifier of the first, by its name"
    Equal "n-9", matches(1, 0), "part number of the first"
    Equal 2, matches(0, 1), "identifier of the second"
    Equal "N-1", matches(1, 1), "part number of the second"
End Sub

Sub AllMeansAll
    Equal 3, UBound(store.GetFindMatchesByName("", True), 2), "by name"
    Equal 3, UBound(store.GetFindMatchesByName("Bolt", True), 2), "by name, with a text"
    Equal 3, UBound(store.GetFindMatchesByName("'", True), 2), "by name, with a quote"
    Equal 3, UBound(store.GetFindMatchesByPartNum("", True), 2), "by part number"
    Dim matches : matches = store.GetFindMatchesByName("", True)
    Equal "50% off", matches(1, 0), "in name order"
End Sub

Sub NothingIsNull
    Equal Null, store.GetFindMatchesByName("", False), "no text"
    Equal Null, store.GetFindMatchesByName("zzz", False), "no match"
    Equal Null, store.GetFindMatchesByName("olt", False), "inside a name"
    Equal Null, store.GetFindMatchesByName("Bolt  ", False), "longer than a name"
    Equal Null, store.GetFindMatchesByName("O'B", False), "a quote in a name"
    Equal Null, store.GetFindMatchesByPartNum("O'B", False), "a quote in a part number"
    Equal Null, store.GetFindMatchesByPartNum("", False), "no text of a part number"
    Equal Null, store.GetFindMatchesByPartNum("1", False), "inside a part number"
End Sub

Sub OtherSignsMatchThemselves
    Dim matches : matches = store.GetFindMatchesByName("50%", False)
    Equal 5, matches(0, 0), "per cent"
    Equal Null, store.GetFindMatchesByName("%", False), "no joker"
    Equal Null, store.GetFindMatchesByName("_ut", False), "no joker either"
    Equal Null, store.GetFindMatchesByName("*", False), "nor this"
End Sub

Sub TheCursorStays
    Dim matches
    store.FindRow 4
    matches = store.GetFindMatchesByName("n", False)
    matches = store.GetFindMatchesByPartNum("", True)
    matches = store.GetFindMatchesByName("'", False)
    Equal 4, store.Fields(PF_RowID), "the current row"
End Sub

Sub PartialFindIsAlwaysFalse
    Dim text
    For Each text In Array("", "Bolt", "zzz", "'")
        Equal False, store.PartialFindByName(text), "'" & text & "'"
    Next
End Sub

Sub RowsAreFoundByIdentifier
    store.FindRow 2
    Equal "Nut", store.Fields(PF_Name), "2"
    store.FindRow 5
    Equal "50% off", store.Fields(PF_Name), "5, although the cursor stood behind it"
    store.FindRow 99
    Equal True, store.EOF, "absent"
    Equal -3, store.CurrentRecordIdx, "position of an absent one"
    store.FindRow -2147483648
    Equal True, store.EOF, "absent and negative"
End Sub

Sub RowsAreFoundBySynchronisationIdentifier
    store.FindRow 2
    store.Fields(PF_UniqueID) = -70
    store.FindRow 4
    store.Fields(PF_UniqueID) = -70
    store.FindRowBySyncID -70
    Equal 4, store.Fields(PF_RowID), "the first of two in row order"
    store.FindRowBySyncID 0
    Equal 5, store.Fields(PF_RowID), "the first that has none"
    store.FindRowBySyncID 71
    Equal True, store.EOF, "absent"
End Sub

AnEmptyTableHasNoMatches
AddProduct "Nut", "N-1"
AddProduct "Bolt", "B-1"
AddProduct "bolt cutter", "n-9"
AddProduct "50% off", "-"
MatchesAreATableOfColumnsAndRows
PartNumbersMatchInRowOrder
AllMeansAll
NothingIsNull
OtherSignsMatchThemselves
TheCursorStays
PartialFindIsAlwaysFalse
RowsAreFoundByIdentifier
RowsAreFoundBySynchronisationIdentifier
