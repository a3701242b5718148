@echo off
rem Registers the map control, or takes it out, and says in words what went wrong.
rem   register.cmd           for all users of this machine; needs an administrator
rem   register.cmd user      for this user alone
rem   register.cmd remove    takes the machine's registration out; "register.cmd remove user" this user's
rem Any other word changes nothing and ends with status 2.
setlocal
set mode=register
set who=machine
rem Marks round it, and no way through "call": a folder may be named with what the command line has a meaning for.
set "folder=%~dp0"
set failed=0
:words
if "%~1"=="" goto begin
set known=no
if /i "%~1"=="remove" set known=yes
if /i "%~1"=="remove" set mode=remove
if /i "%~1"=="user" set known=yes
if /i "%~1"=="user" set who=user
if "%known%"=="no" goto usage
shift
goto words

:usage
echo Usage: register.cmd [remove] [user]
echo   Without a word: registers the map control for all users of this machine, as an administrator.
echo   user: for this user alone.
echo   remove: takes the registration out.
exit /b 2

:begin
rem What a 32-bit program starts sees the 64-bit system under this name only.
set "system=%SystemRoot%\System32"
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set "system=%SystemRoot%\Sysnative"
rem Each width has its own control and its own regsvr32. A 32-bit Windows has the one width only.
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" goto both
if "%PROCESSOR_ARCHITECTURE%"=="AMD64" goto only64
set "regsvr=%system%\regsvr32.exe"
set "file=%folder%win32\orvane4.ocx"
call :one 32-bit
exit /b %failed%
:both
set "regsvr=%SystemRoot%\SysWOW64\regsvr32.exe"
set "file=%folder%win32\orvane4.ocx"
call :one 32-bit
:only64
set "regsvr=%system%\regsvr32.exe"
set "file=%folder%win64\orvane4.ocx"
call :one 64-bit
exit /b %failed%

:one
set options=/s
if "%mode%"=="remove" set options=/s /u
if not "%who%"=="user" goto run
set options=%options% /n /i:user
:run
"%regsvr%" %options% "%file%"
set code=%errorlevel%
if "%code%"=="0" (
    echo %1: done.
    exit /b 0
)
set failed=1
echo %1: FAILED, status %code%.
if "%code%"=="1" echo   The options were not understood. This regsvr32 may be very old.
if "%code%"=="2" echo   COM could not be started on this machine.
if "%code%"=="3" echo   The file "%file%" could not be loaded. Is it there, whole, and not blocked as a download?
if "%code%"=="4" echo   The file "%file%" is not the map control: it has no entry to register.
if "%code%"=="5" echo   The registry could not be written. Run this as an administrator, or use "register.cmd user".
exit /b 1
