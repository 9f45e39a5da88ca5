' SPDX-License-Identifier: MIT
' The one cursor of a store: rows in name order, and the places before the first and after the last.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_RowID = 0
Const PF_Name = 3

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

Sub IsRefusedWithoutARow(text)
    Equal 3021, Err.Number, "number: " & text
    Check Len(Err.Description) > 0, "description: " & text
    Err.Clear
End Sub

Sub AnEmptyTableHasNoRow
    Dim value
    Equal 0, store.Count, "rows"
    Equal True, store.BOF, "BOF"
    Equal True, store.EOF, "EOF"
    Equal -1, store.CurrentRecordIdx, "position"
    On Error Resume Next
    store.MoveFirst : IsRefusedWithoutARow "MoveFirst"
    store.MoveLast : IsRefusedWithoutARow "MoveLast"
    store.MoveNext : IsRefusedWithoutARow "MoveNext"
    store.MovePrevious : IsRefusedWithoutARow "MovePrevious"
    store.GotoNthProduct 0 : IsRefusedWithoutARow "GotoNthProduct"
    value = store.Fields(PF_Name) : IsRefusedWithoutARow "Fields, read"
    store.Fields(PF_Name) = "x" : IsRefusedWithoutARow "Fields, written"
    store.Delete 1 : IsRefusedWithoutARow "Delete"
    On Error GoTo 0
    Equal True, IsEmpty(value), "nothing was read"
    ' These have nothing to do there.
    store.FindRow 1
    store.FindRowBySyncID 1
    store.DeleteAll
    store.SetDirtySyncFlags True
    store.SetDirtySessionFlags True
    Equal False, store.SessionIsDirty, "nothing was changed"
End Sub

Sub AddFiveProducts
    Dim name
    ' Letter case does not count in the order; the file's order is that of the names.
    For Each name In Array("delta", "Alpha", "charlie", "Bravo", "Echo")
        store.AddNew Array(0, name, "", "", CCur(0), "")
    Next
    Equal 5, store.Count, "rows"
End Sub

Sub ItWalksForth
    Dim names, at
    store.MoveFirst
    Equal False, store.BOF, "BOF on the first"
    Do Until store.EOF
        at = at + 1
        Equal at, store.CurrentRecordIdx, "position"
        names = names & store.Fields(PF_Name) & " "
        store.MoveNext
    Loop
    Equal "Alpha Bravo charlie delta Echo ", names, "in name order"
    Equal -3, store.CurrentRecordIdx, "position after the last"
    Equal False, store.BOF, "BOF after the last"
End Sub

Sub ItWalksBack
    Dim names
    store.MoveLast
    Equal 5, store.CurrentRecordIdx, "position of the last"
    Do Until store.BOF
        names = names & store.Fields(PF_Name) & " "
        store.MovePrevious
    Loop
    Equal "Echo delta charlie Bravo Alpha ", names, "in reverse order"
    Equal -2, store.CurrentRecordIdx, "position before the first"
    Equal False, store.EOF, "EOF before the first"
End Sub

Sub ItGoesNoFurtherThanItsEnds
    On Error Resume Next
    store.MoveLast
    store.MoveNext
    Equal 0, Err.Number, "past the last"
    store.MoveNext : IsRefusedWithoutARow "MoveNext at the end"
    Equal True, store.EOF, "still at the end"
    store.MovePrevious
    Equal "Echo", store.Fields(PF_Name), "back on the last"
    store.MoveFirst
    store.MovePrevious
    Equal 0, Err.Number, "past the first"
    store.MovePrevious : IsRefusedWithoutARow "MovePrevious at the begin"
    Equal True, store.BOF, "still at the begin"
    store.MoveNext
    Equal "Alpha", store.Fields(PF_Name), "back on the first"
    Equal 0, Err.Number, "the way back"
End Sub

Sub ItGoesToTheNth
    store.GotoNthProduct 0
    Equal "Alpha", store.Fields(PF_Name), "0"
    Equal 1, store.CurrentRecordIdx, "positions begin at 1"
    store.GotoNthProduct 4
    Equal "Echo", store.Fields(PF_Name), "4"
    store.GotoNthProduct 5
    Equal True, store.EOF, "beyond the end"
    store.GotoNthProduct 2147483647
    Equal True, store.EOF, "far beyond the end"
    store.GotoNthProduct -1
    Equal True, store.BOF, "negative"
    store.GotoNthProduct -2147483648
    Equal True, store.BOF, "as negative as can be"
End Sub

Sub ADeletedRowStaysCurrent
    Dim value
    store.Delete 3
    Equal 4, store.Count, "rows"
    Equal -1, store.CurrentRecordIdx, "its position is not known"
    On Error Resume Next
    value = store.Fields(PF_Name) : IsRefusedWithoutARow "Fields of a deleted row"
    store.Delete 3 : IsRefusedWithoutARow "Delete of a deleted row"
    Equal 4, store.Count, "rows, still"
    On Error GoTo 0
    store.FindRow 4
    store.Delete 4
    store.MoveNext
    Equal "delta", store.Fields(PF_Name), "what followed it"
    Equal 2, store.CurrentRecordIdx, "its position"
    store.DeleteAll
    Equal 0, store.Count, "no rows"
    Equal True, store.BOF And store.EOF, "both ends"
End Sub

AnEmptyTableHasNoRow
AddFiveProducts
ItWalksForth
ItWalksBack
ItGoesNoFurtherThanItsEnds
ItGoesToTheNth
ADeletedRowStaysCurrent
