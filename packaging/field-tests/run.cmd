@echo off
rem The field tests of Vilnor. README.txt explains them; run.cmd /? lists the options.
if exist "%~dp0bin\FieldTests.exe" goto run
echo The folder "bin" with the programs is missing. Unpack the whole folder first.
pause
exit /b 2
:run
"%~dp0bin\FieldTests.exe" %*
