' SPDX-License-Identifier: MIT
' What was changed: a mark of the store, and two marks of each row that the file keeps.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_UniqueID = 1
Const PF_Name = 3
Const PF_DirtySession = 8
Const PF_DirtySync = 9

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")

Sub OpenAgain
    Set store = Nothing
    Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
End Sub

' The marks of all rows in row order, "x" for a set one.
Function Marks(column)
    store.MoveFirst
    Do Until store.EOF
        If store.Fields(column) Then Marks = Marks & "x" Else Marks = Marks & "-"
        store.MoveNext
    Loop
End Function

Sub EachChangeMarksTheSession
    Dim step, row
    For step = 1 To 5
        OpenAgain
        Equal False, store.SessionIsDirty, "a fresh store, step " & step
        Select Case step
        Case 1 : row = store.AddNew(Array(0, "A", "", "", CCur(0), ""))
        Case 2 : store.Update store.Pack(row)
        Case 3 : store.FindRow row : store.Fields(PF_Name) = "B"
        Case 4 : store.Delete row
        Case 5 : store.AddNew Array(0, "C", "", "", CCur(0), "") : store.DeleteAll
        End Select
        Equal True, store.SessionIsDirty, "a change, step " & step
    Next
End Sub

Sub ReadingMarksNothing
    Dim value, name
    OpenAgain
    For Each name In Array("A", "B", "C", "D", "E")
        store.AddNew Array(0, name, "", "", CCur(0), "")
    Next
    OpenAgain
    store.MoveFirst
    value = store.Fields(PF_Name)
    store.Fields(PF_Name) = "A"
    store.Fields(PF_UniqueID) = 5
    value = store.Pack(store.Fields(0))
    value = store.GetFindMatchesByName("A", False)
    store.SetDirtySyncFlags True
    store.MoveFirst
    store.SetDirtySessionFlags True
    store.CSVProductExport Array(Arg(1) & "\products.csv")
    store.BinaryProductExport Arg(1) & "\products.bin"
    Equal False, store.SessionIsDirty, "nothing was changed"
    store.DeleteAll
    Equal True, store.SessionIsDirty, "all deleted"
    store.CancelUpdate = True
    OpenAgain
End Sub

Sub TheFileKeepsTheMarkForSynchronisation
    Equal "xxxxx", Marks(PF_DirtySync), "of an earlier session"
    Equal "-----", Marks(PF_DirtySession), "of this session"
    Equal False, store.SessionIsDirty, "the store is clean"
    store.MoveFirst
    store.SetDirtySyncFlags False
    Equal "-----", Marks(PF_DirtySync), "taken away"
    OpenAgain
    Equal "-----", Marks(PF_DirtySync), "the file knows it"
End Sub

Sub AWalkBeginsAtTheCurrentRow
    Dim value
    store.MoveFirst
    store.SetDirtySyncFlags True
    Equal True, store.EOF, "the walk ends behind the last row"
    store.GotoNthProduct 2
    store.SetDirtySyncFlags False
    Equal "xx---", Marks(PF_DirtySync), "for synchronisation"
    store.GotoNthProduct 3
    store.SetDirtySessionFlags True
    Equal True, store.EOF, "this one ends there as well"
    Equal "---xx", Marks(PF_DirtySession), "for the session"
    store.SetDirtySessionFlags False
    Equal "---xx", Marks(PF_DirtySession), "from behind the last row nothing is reached"
    Equal False, store.SessionIsDirty, "the store is clean"
End Sub

Sub AnEditMarksItsRowAlone
    store.MoveFirst
    store.SetDirtySyncFlags False
    store.MoveFirst
    store.SetDirtySessionFlags False
    store.GotoNthProduct 1
    store.Fields(PF_Name) = "Bb"
    Equal "-x---", Marks(PF_DirtySync), "for synchronisation"
    Equal "-x---", Marks(PF_DirtySession), "for the session"
End Sub

EachChangeMarksTheSession
ReadingMarksNothing
TheFileKeepsTheMarkForSynchronisation
AWalkBeginsAtTheCurrentRow
AnEditMarksItsRowAlone
store.CancelUpdate = True
