' SPDX-License-Identifier: MIT
' A day with the catalogue, without a window: products come from a file, are looked through, one gets another
' price, and the next session finds it.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = "Base"

Const PF_RowID = 0
Const PF_Name = 3
Const PF_PartNum = 5
Const PF_UnitPrice = 6
Const PF_Note = 7
Const PF_DirtySync = 9

Dim files : Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder files.BuildPath(Arg(1), "Base")
Dim source : source = files.BuildPath(Arg(1), "products.csv")
WriteText source, "Part,Product,Remark,Price" & vbCrLf & _
    "N-1,Nut,""M6, zinc"",0.05" & vbCrLf & _
    "B-1,Bolt,,""$1,200.00""" & vbCrLf & _
    "H-1,Hinge,left,on demand" & vbCrLf & _
    "W-1,Washer,,0.02" & vbCrLf

' The catalogue is empty at first. The file's columns are 1 name, 0 part number, 3 price, 2 note.
Dim store : Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
Equal 0, store.Count, "products at first"
Dim result : result = store.CSVProductImport(Array(source, Array(1, 0, 3, 2), 1, 0))
Equal 0, result(0), "status"
Equal "", result(1), "no description"
Equal 3, result(2), "imported"
Equal 1, result(3), "rejected, for its price"

' Through all products, in name order.
Dim seen
store.MoveFirst
Do Until store.EOF
    seen = seen & store.Fields(PF_Name) & "=" & store.Fields(PF_UnitPrice) & " "
    store.MoveNext
Loop
Equal "Bolt=1200 Nut=0.05 Washer=0.02 ", seen, "names and prices"

' A product whose name begins with "nu" gets another price.
Dim matches : matches = store.GetFindMatchesByName("nu", False)
Equal 0, UBound(matches, 2), "one match"
Dim product : product = store.Pack(matches(0, 0))
Equal "Nut", product(1), "its name"
Equal "M6, zinc", product(5), "its note"
product(4) = CCur("0.07")
store.Update product
Equal CCur("0.07"), store.Fields(PF_UnitPrice), "the new price"
Equal True, store.SessionIsDirty, "there is something to save"
Dim edited : edited = store.Fields(PF_RowID)

' Released, the store saves; the next one opens what it saved.
Set store = Nothing
Set store = CreateObject("KestrinProductEditor.ProductLkpMgr")
store.CancelUpdate = True
Equal 3, store.Count, "products of the file"
Equal False, store.SessionIsDirty, "nothing to save"
store.FindRow edited
Equal False, store.EOF, "the product is there"
Equal "Nut", store.Fields(PF_Name), "name"
Equal "N-1", store.Fields(PF_PartNum), "part number"
Equal CCur("0.07"), store.Fields(PF_UnitPrice), "price"
Equal "M6, zinc", store.Fields(PF_Note), "note"
Equal True, store.Fields(PF_DirtySync), "due for synchronisation"

' What an export writes an import takes.
Dim target : target = files.BuildPath(Arg(1), "export.csv")
store.CSVProductExport Array(target)
Equal """Name"",""PartNum"",""UnitPrice"",""Note""" & vbCrLf & _
    """Bolt"",""B-1"",""$1,200.00"",""""" & vbCrLf & _
    """Nut"",""N-1"",""$0.07"",""M6, zinc""" & vbCrLf & """Washer"",""W-1"",""$0.02"",""""" & vbCrLf, _
    ReadText(target), "the export"
result = store.CSVProductImport(Array(target, Array(0, 1, 2, 3), 1, 0))
Equal 3, result(2), "imported from it"
store.CSVProductExport Array(source)
Equal ReadText(target), ReadText(source), "exported anew"
