' SPDX-License-Identifier: MIT
' What the host has to offer before a class can be created. A trace that cannot be made is shown to the user
' in a message box, so that is for tests that can press its button.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")
host.InstallPath = Arg(1)
host.DBSubdirName = ""

Function NumberOfCreation(className)
    Dim object
    On Error Resume Next
    Set object = CreateObject("KestrinProductEditor." & className)
    NumberOfCreation = Err.Number
End Function

Dim name
Equal 0, host.TraceObjects, "no trace before the first object"
For Each name In Array("ProdLkpEditDlg", "ProductLkpMgr", "ProductEditorDlg", "ProductImportDlg", _
                       "ProductExportDlg")
    Equal 0, NumberOfCreation(name), name
    Equal 1, host.TraceObjects, "one trace serves them all: " & name
    Equal 0, host.ConfigObjects, "no configuration is kept: " & name
Next

' A store needs the configuration, the launchers do not.
host.FailCreation "CorvoConf.Config", 70
Equal 429, NumberOfCreation("ProductLkpMgr"), "a store without a configuration"
Equal 0, NumberOfCreation("ProductImportDlg"), "a launcher without a configuration"
host.FailCreation "CorvoConf.Config", 0
Equal 0, NumberOfCreation("ProductLkpMgr"), "a store with a configuration"
