@echo off
rem SPDX-License-Identifier: MIT
rem Registers the kstnedit.dll that lies beside this file: for the machine, or for this user alone where no more
rem is allowed. register.cmd /u takes the registration away.
regsvr32 /s %1 "%~dp0kstnedit.dll"
if not errorlevel 1 exit /b 0
echo kstnedit.dll could not be registered or unregistered. 1>&2
exit /b 1
