' SPDX-License-Identifier: MIT
' Edits the catalogue in the folder of the first argument as the second one tells: a file of lines, each a command
' and what belongs to it, with tabs between. Without a command the store is opened and released, which saves it.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")

' A number and a value by turns: the places in a packed product, and what is written there.
Sub SetFields(words)
    Dim product, at
    product = store.Pack(CLng(words(1)))
    For at = 2 To UBound(words) Step 2
        If words(at) = "4" Then
            product(4) = CCur(words(at + 1))
        Else
            product(CLng(words(at))) = words(at + 1)
        End If
    Next
    store.Update product
End Sub

Sub AddProduct(words)
    Dim rowID : rowID = store.AddNew(Array(0, words(1), words(2), words(3), CCur(words(4)), words(5)))
    Equal rowID, store.Fields(0), "the new product is current"
End Sub

Sub DeleteProducts(words)
    Dim at
    For at = 1 To UBound(words)
        store.Delete CLng(words(at))
    Next
End Sub

Sub ImportList(words)
    Dim result : result = store.CSVProductImport(Array(words(1), Array(0, 1, 2, 3), 1, 1))
    Equal CLng(words(2)), result(2), "imported"
    Equal 0, result(3), "rejected"
End Sub

' Identifier, name, key, part number and note of each product, in the order of the store.
Sub WriteTexts(words)
    Dim texts, column
    store.MoveFirst
    Do Until store.EOF
        texts = texts & store.Fields(0)
        For Each column In Array(3, 4, 5, 7)
            texts = texts & vbTab & store.Fields(column)
        Next
        texts = texts & vbLf
        store.MoveNext
    Loop
    WriteText words(1), texts
End Sub

Dim line, words
For Each line In Split(ReadText(Arg(2)), vbLf)
    words = Split(line, vbTab)
    If line <> "" Then
        Select Case words(0)
        Case "set" SetFields words
        Case "add" AddProduct words
        Case "delete" DeleteProducts words
        Case "import" ImportList words
        Case "texts" WriteTexts words
        Case "only-read" store.CancelUpdate = True
        Case Else Check False, "the command " & words(0)
        End Select
    End If
Next
Equal False, IsNull(store), "it came to the end"
Set store = Nothing
