@echo off
rem Starts the simulated generator in this window, and the desk on it. The generator ends with the desk.
setlocal
rem unlike cd, it accepts a network folder
pushd "%~dp0"
title VELOTRACE simulated generator
set "control=\\.\pipe\velotrace_training_%USERNAME%"

velotrace_sim.exe --send "%control%" state >nul 2>&1
if %errorlevel%==0 goto running
echo Type help to see what the simulated generator can do. Closing this window ends it.
start "" /b velotrace_sim.exe --control "%control%"

set tries=0
:wait
velotrace_sim.exe --send "%control%" state >nul 2>&1
if %errorlevel%==0 goto ready
set /a tries+=1
if %tries% geq 10 goto failed
rem one second
ping -n 2 127.0.0.1 >nul
goto wait

:running
echo The training is running already.
pause
exit /b 1

:failed
echo The simulated generator has not started.
pause
exit /b 1

:ready
start "" /wait velotrace.exe
velotrace_sim.exe --send "%control%" quit >nul 2>&1
popd
