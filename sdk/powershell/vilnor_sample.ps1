# A host of Vilnor in one script.
#   C:\Windows\SysWOW64\WindowsPowerShell\v1.0\powershell.exe -STA -File vilnor_sample.ps1 `
#     CONNECTION DBTYPE FOLDER PID BID RID FHPID
# README.md explains the arguments. ($PID is PowerShell's own, so the patient is $patientPid.)
param([string]$connectionParameter, [int16]$dbType, [string]$folder,
      [int]$patientPid, [int]$bid, [int]$rid, [int]$fhpId)

function Fail([int]$code, [string]$line) {
  # A driver's text may have several lines.
  [Console]::Error.WriteLine("vilnor_sample: $($line -replace '\s+', ' ')")
  exit $code
}

# Receives the events. Vilnor raises them on this thread, before the call that causes them returns.
Add-Type -TypeDefinition @'
using System;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;

[ComImport, Guid("DE68F4B2-1C62-47A9-BF92-0D44F86E9FCD"),
 InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
public interface __BVilnor
{
    [DispId(1)]
    void CloseVilnor();
    [DispId(2)]
    void UpdateJournal();
}

[ComVisible(true), ClassInterface(ClassInterfaceType.None)]
public sealed class JournalSink : __BVilnor
{
    private readonly IConnectionPoint point;
    private readonly int cookie;

    public JournalSink(object vilnor)
    {
        Guid events = typeof(__BVilnor).GUID;
        ((IConnectionPointContainer)vilnor).FindConnectionPoint(ref events, out point);
        point.Advise(this, out cookie);
    }

    public void CloseVilnor()
    {
    }

    public void UpdateJournal()
    {
        Console.WriteLine("Event UpdateJournal: a host shows its journal again.");
    }

    public void Disconnect()
    {
        point.Unadvise(cookie);
        Marshal.ReleaseComObject(point);
    }
}
'@

# --- Results that nobody read, for example because the host was closed before the answer came.
# "OutNewCase4711.xml" is the name that Vilnor reads. It sets a result aside under a name like
# "OutNewCase4711 2026-11-16 14.05.00.xml".

$resultName = '^Out(NewFHP|NewCase|ExistCase)(0|-?[1-9][0-9]{0,9})( .*)?\.xml$'
$stuck = @{}

function OwnNameOf([string]$name) {
  if ($name -cmatch $resultName) { "Out$($Matches[1])$($Matches[2]).xml" }
}

# Of two results with the same time, the one that was set aside is older.
function WaitingIn([string]$folder) {
  Get-ChildItem -LiteralPath $folder -Filter 'Out*.xml' -ErrorAction SilentlyContinue |
    Where-Object { $_.Name -cmatch $resultName -and [Math]::Abs([long]$Matches[2]) -le [int]::MaxValue } |
    Sort-Object LastWriteTimeUtc, { $_.Name -ceq (OwnNameOf $_.Name) }
}

function CountIn([string]$folder, [string]$own) {
  @(WaitingIn $folder | Where-Object { (OwnNameOf $_.Name) -ceq $own }).Count
}

# A newer result of that name is renamed for the time being. False if a file cannot be renamed.
function GiveOwnName([string]$folder, [string]$name, [string]$own) {
  $ownPath = Join-Path $folder $own
  if ($name -ceq $own) { return $true }
  try {
    for ($number = 1; Test-Path -LiteralPath $ownPath; ++$number) {
      $aside = $ownPath.Substring(0, $ownPath.Length - 4) + " waiting $number.xml"
      if (-not (Test-Path -LiteralPath $aside)) { [IO.File]::Move($ownPath, $aside) }
    }
    [IO.File]::Move((Join-Path $folder $name), $ownPath)
    return $true
  } catch {
    return $false
  }
}

function ReadResult($vilnor, [string]$own) {
  if ($own -cmatch $resultName) {
    [int]$key = $Matches[2]
    switch ($Matches[1]) {
      'NewFHP' { $vilnor.ReadNewFHP([ref]$key) }
      'NewCase' { $vilnor.ReadNewCase([ref]$key) }
      'ExistCase' { $vilnor.ReadExistCase([ref]$key) }
    }
  }
}

# Reads them, the oldest first. Deletes and overwrites nothing, so it may be interrupted at any
# moment. Call it at the start and when the database is back, while no request is open.
function ReadWaitingResults($vilnor, [string]$folder) {
  while ($true) {
    $found = WaitingIn $folder | Where-Object { -not $stuck[(OwnNameOf $_.Name)] } |
      Select-Object -First 1
    if (-not $found) { return }
    $own = OwnNameOf $found.Name
    $before = CountIn $folder $own
    if (GiveOwnName $folder $found.Name $own) { ReadResult $vilnor $own }
    if ((CountIn $folder $own) -lt $before) {
      Write-Host "$($found.Name) is dealt with"
    } else {
      # Those with the same key that are newer must not be read before it.
      $stuck[$own] = $true
      Write-Host "$($found.Name) stays: a person must look at it"
    }
  }
}

# --- The session.

# Vilnor reports a failing database in message boxes. Only a DBVilnor returns the error, when it is
# created; so a host that creates one first can tell the user in its own words. It must release it,
# because it keeps the database open.
function TryDatabase {
  try {
    $database = New-Object -ComObject Vilnor.DBVilnor -ErrorAction Stop
    [void][Runtime.InteropServices.Marshal]::FinalReleaseComObject($database)
  } catch {
    Fail 4 "the database cannot be opened; check the connection string: $($_.Exception.Message)"
  }
}

# Asks whether Vilnor Link can take everything that is planned in an application.
function AskWhetherItFits($vilnor, [int]$fhpId) {
  [int16]$errCode = 0
  [string]$errMsg = ''
  if ($vilnor.OKToSend([ref]$fhpId, [ref]$errCode, [ref]$errMsg)) {
    Write-Host "OKToSend ${fhpId}: yes"
  } else {
    Write-Host "OKToSend ${fhpId}: no, $errCode $errMsg"
  }
}

if ($PSBoundParameters.Count -ne 7) {
  Fail 1 'usage: vilnor_sample.ps1 CONNECTION DBTYPE FOLDER PID BID RID FHPID'
}
if ([IntPtr]::Size -ne 4) {
  Fail 2 ('Vilnor.dll is 32-bit, and a 64-bit process cannot load it; start this script with the ' +
    'powershell.exe in C:\Windows\SysWOW64\WindowsPowerShell\v1.0')
}
if ([Threading.Thread]::CurrentThread.GetApartmentState() -ne 'STA') {
  Fail 2 'Vilnor needs a single-threaded apartment; start powershell.exe with -STA'
}
try {
  $vilnor = New-Object -ComObject Vilnor.BVilnor -ErrorAction Stop
} catch {
  Fail 3 ('Vilnor.dll is not registered on this computer; an administrator installs ' +
    "Vilnor-1.5.N.msi: $($_.Exception.Message)")
}
$sink = New-Object JournalSink $vilnor
try {
  [int16]$kestraLangID = 1
  $vilnor.InitVilnor([ref]$connectionParameter, [ref]$kestraLangID, [ref]$dbType)
  Write-Host 'Vilnor is ready.'
  TryDatabase
  ReadWaitingResults $vilnor $folder
  AskWhetherItFits $vilnor $fhpId
  $vilnor.OpenWithNewCase([ref]$patientPid, [ref]$bid, [ref]$rid)
  Write-Host "A new case for patient ${patientPid}: waiting for Vilnor Link's answer."
  # The answer comes as a window message, and a box is a script's simplest message loop. While it is
  # open, Vilnor reads the result and changes the database.
  Add-Type -AssemblyName System.Windows.Forms
  [void][Windows.Forms.MessageBox]::Show(
    'Send the case in Vilnor Link. Press OK when you have closed it.', 'Vilnor sample')
  Write-Host 'The box is closed: a host shows its journal again.'
} finally {
  $sink.Disconnect()
  [void][Runtime.InteropServices.Marshal]::FinalReleaseComObject($vilnor)
  Write-Host 'Vilnor is released.'
}
