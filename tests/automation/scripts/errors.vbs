' SPDX-License-Identifier: MIT
' What a script finds in Err after each kind of failure.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_UniqueID = 1
Const PF_Name = 3

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

' Compares all that is told, but an expected text "..." may be any that is not empty.
Sub Failed(number, source, description, text)
    Equal number, Err.Number, "number: " & text
    If source <> "..." Then Equal source, Err.Source, "source: " & text
    If description = "..." Then
        Check Len(Err.Description) > 0, "description: " & text
    Else
        Equal description, Err.Description, "description: " & text
    End If
    Err.Clear
End Sub

Sub TextsOfTheComponentItself
    Dim product
    On Error Resume Next
    product = store.Pack(5)
    Failed -2147220503, "KestrinProductEditor.ProductLkpMgr::Pack", "Product not found", "Pack"
    store.Update Array(5, "", "", "", 0, "")
    Failed -2147220503, "KestrinProductEditor.ProductLkpMgr::Update", "Product not found", "Update"
    store.BinaryProductImport Arg(1) & "\missing"
    Failed -2147220503, "KestrinProductMgr.ProductLkpMgr::BinaryProductImport", _
        "The path specified does not exist.", "BinaryProductImport"
End Sub

Sub ErrorsOfTheTable
    Dim value
    store.AddNew Null
    On Error Resume Next
    value = store.Fields(10)
    Failed 3265, "...", "...", "a column that is not there"
    store.Fields(PF_Name) = String(256, "x")
    Failed -2147217887, "...", "...", "a text too long"
    store.Delete 77
    Failed 3021, "...", "...", "a product that is not there"
    store.MoveLast
    store.MoveNext
    store.MoveNext
    Failed 3021, "...", "...", "beyond the end"
    value = store.Fields(PF_Name)
    Failed 3021, "...", "...", "no current row"
End Sub

Sub ErrorsOfFiles
    Dim missing : missing = Arg(1) & "\missing\file"
    On Error Resume Next
    store.CSVProductExport Array(missing)
    Failed 76, "...", "...", "CSVProductExport"
    store.BinaryProductExport missing
    Failed 76, "...", "...", "BinaryProductExport"
    WriteText Arg(1) & "\text", "no catalogue"
    store.BinaryProductImport Arg(1) & "\text"
    Failed 321, "...", "...", "BinaryProductImport"
End Sub

Sub WrongKindsOfArguments
    On Error Resume Next
    store.AddNew "text"
    Failed 13, "...", "...", "a product"
    store.AddNew Array(1, 2)
    Failed 9, "...", "...", "a short product"
    store.FindRow "text"
    Failed 13, "...", "...", "an identifier"
    store.FindRow 3000000000
    Failed 6, "...", "...", "an identifier too large"
    store.FindRow Null
    Failed 13, "...", "...", "Null as an identifier"
    store.CancelUpdate = "text"
    Failed 13, "...", "...", "a flag"
    store.SetNotifyCallback "text"
    Failed 13, "...", "...", "a receiver"
End Sub

Sub WrongCountsOfArguments
    Dim value
    On Error Resume Next
    store.AddNew
    Failed 450, "...", "...", "AddNew without"
    store.AddNew Null, Null
    Failed 450, "...", "...", "AddNew with two"
    store.Delete
    Failed 450, "...", "...", "Delete without"
    store.DeleteAll 1
    Failed 450, "...", "...", "DeleteAll with one"
    store.MoveFirst 1
    Failed 450, "...", "...", "MoveFirst with one"
    value = store.Count(1)
    Failed 450, "...", "...", "Count with one"
    value = store.Fields
    Failed 450, "...", "...", "Fields without"
    value = store.Fields(1, 2)
    Failed 450, "...", "...", "Fields with two"
    value = store.GetFindMatchesByName("a")
    Failed 450, "...", "...", "GetFindMatchesByName with one"
    value = store.GetFindMatchesByPartNum("a", True, 1)
    Failed 450, "...", "...", "GetFindMatchesByPartNum with three"
    store.PrvCSVSetRowFields Null, Null
    Failed 450, "...", "...", "PrvCSVSetRowFields with two"
    store.CSVProductExport
    Failed 450, "...", "...", "CSVProductExport without"
    store.ClearNotifyCallback Nothing
    Failed 450, "...", "...", "ClearNotifyCallback with one"
    Equal True, IsEmpty(value), "nothing was read"
    Equal 1, store.Count, "nothing was done"
End Sub

Sub NamesThatAreNone
    Dim value, name
    On Error Resume Next
    store.Frobnicate
    Failed 438, "...", "...", "a method"
    value = store.SortProductRS
    Failed 438, "...", "...", "a private operation"
    value = store.GetLastRowID
    Failed 438, "...", "...", "another one"
    store.Count = 5
    Failed 438, "...", "...", "Count is read only"
    store.SessionIsDirty = False
    Failed 438, "...", "...", "SessionIsDirty is read only"
    Equal 1, store.Count, "nothing was done"
End Sub

' Names are found in any letter case.
Sub NamesInAnyCase
    Equal 1, store.COUNT, "upper"
    store.movefirst
    Equal "", store.fields(PF_Name), "lower"
End Sub

Sub ClassesThatCannotBeCreated
    Dim name, object, number
    For Each name In Array("IPNotifyCallback", "IProcessProgress", "Product", "ProductLkpView", "FlexDataSrc")
        number = 0
        On Error Resume Next
        Set object = CreateObject("KestrinProductEditor." & name)
        number = Err.Number
        On Error GoTo 0
        Equal 429, number, name
        Equal True, IsEmpty(object), "nothing was created: " & name
    Next
End Sub

' An identifier behind the largest is an overflow.
Sub NoIdentifierIsLeft
    store.MoveFirst
    store.Fields(0) = 2147483647
    On Error Resume Next
    store.AddNew Null
    Failed 6, "...", "...", "AddNew"
    Equal 1, store.Count, "no row was added"
End Sub

TextsOfTheComponentItself
ErrorsOfTheTable
ErrorsOfFiles
WrongKindsOfArguments
WrongCountsOfArguments
NamesThatAreNone
NamesInAnyCase
ClassesThatCannotBeCreated
NoIdentifierIsLeft
