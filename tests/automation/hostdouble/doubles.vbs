' SPDX-License-Identifier: MIT
' The doubles of the host's components do what they are told.
Option Explicit

Dim host : Set host = CreateObject("KstneditTests.Host")

Sub ConfigurationAnswersFromControl
    Dim config : Set config = CreateObject("CorvoConf.Config")
    Equal 1, host.ConfigObjects, "one configuration lives"
    Equal "Data", config("DBSubdirName"), "the usual folder"
    host.InstallPath = "C:\Program Files\Salvo"
    host.DBSubdirName = "Base"
    Equal "C:\Program Files\Salvo", config("InstallPath"), "the ordered path"
    Equal "C:\Program Files\Salvo", host.InstallPath, "the ordered path, at control"
    Equal "Base", config("DBSubdirName"), "the ordered folder"
    Equal Empty, config("Other"), "an unknown key"
    Set config = Nothing
    Equal 0, host.ConfigObjects, "no configuration lives"
End Sub

Sub ConfigurationAnswersUnderOneName
    Dim config, value
    host.ConfigMembers = "GetValue"
    Set config = CreateObject("CorvoConf.Config")
    Equal "Base", config.GetValue("DBSubdirName"), "the ordered name"
    On Error Resume Next
    value = config.Value("DBSubdirName")
    Equal 438, Err.Number, "another name"
    value = Empty
    value = config("DBSubdirName")
    Equal Empty, value, "no default member"
    On Error GoTo 0
    host.ConfigMembers = "default"
End Sub

Sub ConfigurationFails
    Dim config, value
    Set config = CreateObject("CorvoConf.Config")
    host.FailConfig 70
    On Error Resume Next
    value = config("InstallPath")
    Equal 70, Err.Number, "number of a failed setting"
    Equal "configuration failed", Err.Description, "description of a failed setting"
    Err.Clear
    host.FailConfig 0
    value = config("DBSubdirName")
    Equal 0, Err.Number, "a setting after the failure"
    Equal "Base", value, "its value"
End Sub

Sub TraceRecordsWhileToldTo
    Dim before : before = host.TraceObjects
    Dim trace : Set trace = CreateObject("CorvoTWrp.Trace")
    Equal before + 1, host.TraceObjects, "one more trace"
    Equal False, host.Recording, "recording at first"
    trace.TraceEnter "a"
    Equal "", host.Trace, "nothing recorded"
    host.Recording = True
    trace.TraceEnter "X::Y"
    trace.TraceExit "X::Y"
    trace.TraceError ""
    Equal -2147220503, trace.TraceErrNumber, "the number of no error"
    host.AnswerErrNumber = 99
    Equal 99, trace.TraceErrNumber, "the ordered number"
    host.AnswerErrNumber = Null
    Equal -2147220503, trace.TraceErrNumber, "the number of no error, again"
    trace.TraceError "text"
    Dim lines
    lines = Split(host.Trace, vbLf)
    Equal 6, UBound(lines), "lines"
    Equal "Enter X::Y", lines(0), "entry"
    Equal "Exit X::Y", lines(1), "exit"
    Equal "Error none", lines(2), "no error"
    Equal "ErrNumber -> -2147220503", lines(3), "number"
    Equal "ErrNumber -> 99", lines(4), "ordered number"
    Equal "Error none|text", lines(6), "a text"
    host.ClearTrace
    Equal "", host.Trace, "forgotten"
    host.Recording = False
End Sub

Sub TraceFailsOnceAfterSomeCalls
    Dim trace : Set trace = CreateObject("CorvoTWrp.Trace")
    host.FailTrace "TraceEnter", 1, 70
    On Error Resume Next
    trace.TraceExit "another member"
    trace.TraceEnter "first"
    Equal 0, Err.Number, "the call before"
    trace.TraceEnter "second"
    Equal 70, Err.Number, "number of a failed trace"
    Equal "trace failed", Err.Description, "description of a failed trace"
    Err.Clear
    trace.TraceEnter "third"
    Equal 0, Err.Number, "the call after"
    host.FailTrace "TraceEnter", 0, 70
    host.FailTrace "TraceEnter", -1, 0
    trace.TraceEnter "fourth"
    Equal 0, Err.Number, "a failure taken back"
    host.FailTrace "TraceErrNumber", 0, -2147220503
    Dim number : number = trace.TraceErrNumber
    Equal -2147220503, Err.Number, "a number of another facility"
End Sub

Sub CreationFails(progID)
    Dim object
    host.FailCreation progID, 70
    On Error Resume Next
    Set object = CreateObject(progID)
    Check Err.Number <> 0, progID & " is refused"
    Err.Clear
    host.FailCreation progID, 0
    Set object = CreateObject(progID)
    Equal 0, Err.Number, progID & " is created"
End Sub

ConfigurationAnswersFromControl
ConfigurationAnswersUnderOneName
ConfigurationFails
TraceRecordsWhileToldTo
TraceFailsOnceAfterSomeCalls
CreationFails "CorvoConf.Config"
CreationFails "CorvoTWrp.Trace"
