' SPDX-License-Identifier: MIT
' Every kind of value and of array that a script may give for a product, a parameter or an index.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_RowID = 0
Const PF_UniqueID = 1
Const PF_Name = 3
Const PF_Key = 4
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

' A value that is asked for by its object.
Class Boxed
    Public Default Property Get Content
        Content = "boxed"
    End Property
End Class

Sub IsBolt(text)
    Equal "Bolt", store.Fields(PF_Name), "name: " & text
    Equal "K", store.Fields(PF_Key), "key: " & text
    Equal "B-1", store.Fields(PF_PartNum), "part number: " & text
    Equal CCur("1.5"), store.Fields(PF_UnitPrice), "price: " & text
    Equal "note", store.Fields(PF_Note), "note: " & text
    store.DeleteAll
End Sub

Sub AProductIsAnyArray
    Dim values : values = Array(0, "Bolt", "K", "B-1", CCur("1.5"), "note")
    Dim fixed(5), growing, at, dictionary, row
    Set dictionary = CreateObject("Scripting.Dictionary")
    ReDim growing(0)
    For at = 0 To 5
        fixed(at) = values(at)
        ReDim Preserve growing(at)
        growing(at) = values(at)
        dictionary.Add at, values(at)
    Next
    store.AddNew Array(0, "Bolt", "K", "B-1", CCur("1.5"), "note") : IsBolt "Array"
    store.AddNew values : IsBolt "an array in a variable"
    store.AddNew (values) : IsBolt "the same by value"
    store.AddNew fixed : IsBolt "a fixed array"
    store.AddNew growing : IsBolt "a growing array"
    store.AddNew dictionary.Items : IsBolt "items of a dictionary"
    store.AddNew Array(0, "Bolt", "K", "B-1", CCur("1.5"), "note", "more") : IsBolt "one element more"
    row = store.AddNew(Null)
    fixed(0) = row
    store.Update fixed : IsBolt "an update from a fixed array"
    Equal row, fixed(0), "what the caller keeps"
End Sub

Sub KindsOfPrices
    Dim price, row
    For Each price In Array(CCur("2.5"), CDbl(2.5), CSng(2.5), "2.5", "$2.50", " 2.5 ")
        row = store.AddNew(Array(0, "x", "", "", price, ""))
        Equal CCur("2.5"), store.Fields(PF_UnitPrice), "a " & TypeName(price) & " " & price
        Equal vbCurrency, VarType(store.Fields(PF_UnitPrice)), "its kind, from a " & TypeName(price)
        store.Fields(PF_UnitPrice) = 0
        store.Fields(PF_UnitPrice) = price
        Equal CCur("2.5"), store.Fields(PF_UnitPrice), "written, a " & TypeName(price) & " " & price
    Next
    For Each price In Array(CByte(3), CInt(3), CLng(3), 3)
        store.Fields(PF_UnitPrice) = price
        Equal 3, store.Fields(PF_UnitPrice), "written, a " & TypeName(price)
    Next
    store.Fields(PF_UnitPrice) = CCur("4294967295.9999")
    Equal CCur("4294967295.9999"), store.Fields(PF_UnitPrice), "a large amount"
    store.Fields(PF_UnitPrice) = CCur("-4294967295.9999")
    Equal CCur("-4294967295.9999"), store.Fields(PF_UnitPrice), "a large amount below 0"
    store.DeleteAll
End Sub

Sub KindsOfTexts
    Dim row : row = store.AddNew(Null)
    store.Fields(PF_Name) = 12
    Equal "12", store.Fields(PF_Name), "a number"
    store.Fields(PF_Name) = 1.5
    Equal "1.5", store.Fields(PF_Name), "a broken number"
    store.Fields(PF_Name) = CCur("1.5")
    Equal "1.5", store.Fields(PF_Name), "an amount"
    store.Fields(PF_Name) = True
    Equal "True", store.Fields(PF_Name), "a flag"
    store.Fields(PF_Name) = #12/31/1999#
    Equal CStr(#12/31/1999#), store.Fields(PF_Name), "a date"
    store.Fields(PF_Name) = New Boxed
    Equal "boxed", store.Fields(PF_Name), "an object's value"
    store.Fields(PF_Name) = Empty
    Equal "", store.Fields(PF_Name), "Empty"
    store.DeleteAll
End Sub

Sub KindsOfNumbers
    Dim row, index
    row = store.AddNew(Null)
    For Each index In Array(CByte(1), CInt(1), CLng(1), CDbl(1), CCur(1), "1", True)
        store.FindRow row
        store.Fields(PF_UniqueID) = index
        If VarType(index) = vbBoolean Then
            Equal -1, store.Fields(PF_UniqueID), "True"
        Else
            Equal 1, store.Fields(PF_UniqueID), TypeName(index)
            Equal 1, store.Fields(index), "as an index, " & TypeName(index)
        End If
    Next
    store.FindRow CStr(row)
    Equal row, store.Fields(PF_RowID), "a text as an identifier"
    store.FindRow CDbl(row)
    Equal row, store.Fields(PF_RowID), "a broken number as an identifier"
    store.GotoNthProduct Empty
    Equal row, store.Fields(PF_RowID), "Empty is 0"
    store.CancelUpdate = 0
    Equal False, store.CancelUpdate, "0 is False"
    store.CancelUpdate = "True"
    Equal True, store.CancelUpdate, "a text is a flag"
    store.CancelUpdate = 5
    Equal True, store.CancelUpdate, "5 is True"
    Equal 0, UBound(store.GetFindMatchesByName(Empty, 1), 2), "Empty is no text"
    store.DeleteAll
End Sub

Sub Failed(number, text)
    Equal number, Err.Number, "number: " & text
    Check Len(Err.Description) > 0, "description: " & text
    Err.Clear
End Sub

Sub WhatIsNoProductIsRefused
    Dim wrong, twoDimensions(1, 1), threeDimensions(1, 1, 1)
    On Error Resume Next
    For Each wrong In Array(Empty, 1, "Bolt", True, CCur(1), #12/31/1999#)
        store.AddNew wrong : Failed 13, "AddNew of a " & TypeName(wrong)
        store.Update wrong : Failed 13, "Update of a " & TypeName(wrong)
    Next
    store.Update Null : Failed 13, "Update of Null"
    store.AddNew Nothing : Failed 13, "AddNew of Nothing"
    store.AddNew store : Failed 13, "AddNew of an object"
    store.AddNew Array() : Failed 9, "AddNew of no element"
    store.AddNew Array(0, "a", "b", "c", 1) : Failed 9, "AddNew of five elements"
    store.AddNew twoDimensions : Failed 9, "AddNew of two dimensions"
    store.AddNew threeDimensions : Failed 9, "AddNew of three dimensions"
    store.AddNew Array(0, "a", "b", "c", "no price", "d") : Failed 13, "AddNew of a text as a price"
    store.AddNew Array(0, Array("a"), "b", "c", 1, "d") : Failed 13, "AddNew of an array as a name"
    store.AddNew Array(0, "a", "b", "c", 1E300, "d") : Failed 6, "AddNew of too high a price"
    store.Update Array("x", "a", "b", "c", 1, "d") : Failed 13, "Update of a text as an identifier"
    On Error GoTo 0
    Equal 0, store.Count, "nothing was added"
End Sub

Sub WhatIsNoNumberIsRefused
    Dim value
    store.AddNew Null
    On Error Resume Next
    store.FindRow "x" : Failed 13, "a text"
    store.FindRow Nothing : Check Err.Number <> 0, "Nothing" : Err.Clear
    store.FindRow 2147483648 : Failed 6, "beyond the largest"
    store.FindRow -2147483649 : Failed 6, "below the smallest"
    store.FindRow Array(1) : Failed 13, "an array"
    value = store.Fields("PF_Name") : Failed 13, "the name of a column"
    store.Fields(PF_UniqueID) = "x" : Failed 13, "a text as a number"
    store.Fields(PF_UniqueID) = 2147483648 : Failed 6, "a number beyond the largest"
    store.Fields(PF_UnitPrice) = "x" : Failed 13, "a text as a price"
    store.Fields(PF_UnitPrice) = 1E20 : Failed 6, "a price beyond the largest"
    store.Fields(PF_Name) = Array("x") : Failed 13, "an array as a name"
    store.CancelUpdate = "x" : Failed 13, "a text as a flag"
    store.CancelUpdate = Array(True) : Failed 13, "an array as a flag"
    On Error GoTo 0
    Equal True, IsEmpty(value), "nothing was read"
    Equal True, store.CancelUpdate, "the flag stays"
    store.DeleteAll
End Sub

AProductIsAnyArray
KindsOfPrices
KindsOfTexts
KindsOfNumbers
WhatIsNoProductIsRefused
WhatIsNoNumberIsRefused
