' SPDX-License-Identifier: MIT
' Adding, reading, changing and deleting products, whole in their packed form or one column at a time.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Const PF_RowID = 0
Const PF_UniqueID = 1
Const PF_Status = 2
Const PF_Name = 3
Const PF_Key = 4
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7
Const PF_DirtySession = 8
Const PF_DirtySync = 9

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True

Sub Failed(number, source, description, text)
    Equal number, Err.Number, "number: " & text
    If source <> "" Then Equal source, Err.Source, "source: " & text
    If description <> "" Then Equal description, Err.Description, "description: " & text
    Err.Clear
End Sub

Sub IsRow(values, text)
    Dim column
    For column = PF_RowID To PF_DirtySync
        Equal values(column), store.Fields(column), text & ", column " & column
    Next
End Sub

Sub NullMakesAnEmptyProduct
    Equal 2, store.AddNew(Null), "identifiers of a new catalogue begin at 2"
    IsRow Array(2, 0, 0, "", "", "", CCur(0), "", True, True), "an empty product"
    Equal vbLong, VarType(store.Fields(PF_RowID)), "kind of an identifier"
    Equal vbCurrency, VarType(store.Fields(PF_UnitPrice)), "kind of a price"
    Equal vbString, VarType(store.Fields(PF_Note)), "kind of a text"
    Equal vbBoolean, VarType(store.Fields(PF_DirtySync)), "kind of a mark"
End Sub

Sub APackedProductIsAdded
    ' The identifier in it is not asked for.
    Equal 3, store.AddNew(Array(99, "Bolt", "K1", "B-1", CCur("12.3456"), "zinc")), "the next identifier"
    IsRow Array(3, 0, 0, "Bolt", "K1", "B-1", CCur("12.3456"), "zinc", True, True), "an added product"
    Equal 2, store.Count, "rows"
End Sub

Sub PackGivesSixValues
    Dim product : product = store.Pack(3)
    Equal 0, LBound(product), "lower bound"
    Equal 5, UBound(product), "upper bound"
    Equal 3, product(0), "identifier"
    Equal "Bolt", product(1), "name"
    Equal "K1", product(2), "key"
    Equal "B-1", product(3), "part number"
    Equal CCur("12.3456"), product(4), "price"
    Equal "zinc", product(5), "note"
    Equal vbArray + vbVariant, VarType(product), "kind of the array"
    Equal vbLong, VarType(product(0)), "kind of the identifier"
    Equal vbCurrency, VarType(product(4)), "kind of the price"
    Equal 3, store.Fields(PF_RowID), "it is current"
End Sub

Sub UpdateWritesAllFields
    Dim product : product = store.Pack(3)
    store.MoveFirst
    store.SetDirtySyncFlags False
    store.MoveFirst
    store.SetDirtySessionFlags False
    product(1) = "Anchor"
    product(4) = CCur(-5)
    product(5) = ""
    store.Update product
    IsRow Array(3, 0, 0, "Anchor", "K1", "B-1", CCur(-5), "", True, True), "an updated product"
    ' The same again marks the row all the same.
    store.Fields(PF_DirtySync) = False
    store.Update store.Pack(3)
    Equal True, store.Fields(PF_DirtySync), "marked without a change"
End Sub

Sub AnAbsentProductIsNotFound
    Dim product
    On Error Resume Next
    product = store.Pack(77)
    Failed -2147220503, "KestrinProductEditor.ProductLkpMgr::Pack", "Product not found", "Pack"
    store.Update Array(77, "a", "b", "c", CCur(1), "d")
    Failed -2147220503, "KestrinProductEditor.ProductLkpMgr::Update", "Product not found", "Update"
    store.Delete 77
    Failed 3021, "", "", "Delete"
    Equal 2, store.Count, "nothing was added or deleted"
End Sub

Sub OneColumnIsWritten
    store.FindRow 3
    store.Fields(PF_DirtySession) = False
    store.Fields(PF_DirtySync) = False
    store.Fields(PF_UniqueID) = 77
    store.Fields(PF_Status) = -3
    IsRow Array(3, 77, -3, "Anchor", "K1", "B-1", CCur(-5), "", False, False), "columns that mark nothing"
    store.Fields(PF_Name) = "Anchor"
    store.Fields(PF_Key) = "K1"
    store.Fields(PF_PartNum) = "B-1"
    store.Fields(PF_UnitPrice) = CCur(-5)
    store.Fields(PF_Note) = ""
    Equal False, store.Fields(PF_DirtySync), "equal values mark nothing"
    store.Fields(PF_Name) = "anchor"
    IsRow Array(3, 77, -3, "anchor", "K1", "B-1", CCur(-5), "", True, True), "a change of case counts"
End Sub

Sub EachTextColumnMarks
    Dim column
    For Each column In Array(PF_Name, PF_Key, PF_PartNum, PF_UnitPrice, PF_Note)
        store.FindRow 3
        store.Fields(PF_DirtySync) = False
        store.Fields(PF_DirtySession) = False
        store.Fields(column) = "4711"
        Equal True, store.Fields(PF_DirtySync), "for synchronisation, column " & column
        Equal True, store.Fields(PF_DirtySession), "for the session, column " & column
    Next
    IsRow Array(3, 77, -3, "4711", "4711", "4711", CCur(4711), "4711", True, True), "each was written"
End Sub

Sub NullWritesNothingAndEmptyWritesNothingness
    store.FindRow 3
    store.Fields(PF_DirtySync) = False
    store.Fields(PF_Name) = Null
    store.Fields(PF_UnitPrice) = Null
    IsRow Array(3, 77, -3, "4711", "4711", "4711", CCur(4711), "4711", True, False), "Null"
    store.Fields(PF_Key) = Empty
    store.Fields(PF_UnitPrice) = Empty
    IsRow Array(3, 77, -3, "4711", "", "4711", CCur(0), "4711", True, True), "Empty"
End Sub

Sub LimitsOfTheColumns
    Dim column, limit, before
    store.FindRow 3
    On Error Resume Next
    For Each column In Array(PF_Name, PF_Key, PF_PartNum, PF_Note)
        limit = 255
        If column = PF_Note Then limit = 4095
        store.Fields(column) = String(limit, "x")
        Failed 0, "", "", "the longest text, column " & column
        Equal limit, Len(store.Fields(column)), "its length, column " & column
        store.Fields(column) = String(limit + 1, "y")
        Failed -2147217887, "", "", "a longer text, column " & column
        Equal String(limit, "x"), store.Fields(column), "the value stays, column " & column
    Next
    store.AddNew Array(0, String(256, "y"), "", "", CCur(0), "")
    Failed -2147217887, "", "", "AddNew"
    Equal 2, store.Count, "no half row"
    store.Update Array(2, "z", "", "", CCur(0), String(4096, "y"))
    Failed -2147217887, "", "", "Update"
    store.FindRow 2
    Equal "", store.Fields(PF_Name), "no half update"
End Sub

Sub ColumnsThatAreNotThere
    Dim value, index
    store.FindRow 3
    On Error Resume Next
    For Each index In Array(-1, 10, 2147483647, -2147483648)
        value = store.Fields(index)
        Failed 3265, "", "", "read " & index
        store.Fields(index) = "x"
        Failed 3265, "", "", "written " & index
    Next
    Equal True, IsEmpty(value), "nothing was read"
End Sub

Sub TextsOfEveryLetter
    Dim text : text = Chr(233) & Chr(128) & " ~ ""quoted"" 'single' , ;" & vbCrLf & vbTab
    Dim row : row = store.AddNew(Array(0, "letters", "", "", CCur(0), text))
    store.MoveFirst
    store.FindRow row
    Equal text, store.Fields(PF_Note), "read"
    Dim product : product = store.Pack(row)
    Equal text, product(5), "packed"
End Sub

Sub IdentifiersAreNeverUsedAgain
    Dim row : row = store.AddNew(Null)
    store.Delete row
    Equal row + 1, store.AddNew(Null), "after a deletion"
    store.Fields(PF_RowID) = 2147483647
    On Error Resume Next
    store.AddNew Null
    Failed 6, "", "", "no identifier is left"
    On Error GoTo 0
    Equal 4, store.Count, "no row was added"
    store.DeleteAll
    Equal 0, store.Count, "all deleted"
End Sub

NullMakesAnEmptyProduct
APackedProductIsAdded
PackGivesSixValues
UpdateWritesAllFields
AnAbsentProductIsNotFound
OneColumnIsWritten
EachTextColumnMarks
NullWritesNothingAndEmptyWritesNothingness
LimitsOfTheColumns
ColumnsThatAreNotThere
TextsOfEveryLetter
IdentifiersAreNeverUsedAgain
