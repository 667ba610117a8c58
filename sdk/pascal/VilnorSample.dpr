// A host of Vilnor in one file. It needs Vilnor_TLB.pas, which is beside it.
//   VilnorSample CONNECTION DBTYPE FOLDER PID BID RID FHPID
// README.md explains the arguments and how to build it.
program VilnorSample;

{$IFDEF WIN64}{$DEFINE NOT32}{$ENDIF}
{$IFDEF CPUX86_64}{$DEFINE NOT32}{$ENDIF}
{$IFDEF NOT32}
  {$MESSAGE FATAL 'Build this program as 32-bit: Vilnor.dll is, and a 64-bit process cannot load it.'}
{$ENDIF}
{$IFDEF FPC}{$MODE DELPHI}{$ENDIF}
{$APPTYPE CONSOLE}

uses
  Windows, SysUtils, Classes, ActiveX, ComObj, Vilnor_TLB;

const
  // Vilnor Link answers a new case with this message, to a hidden window that Vilnor makes.
  NewCaseAnswer = 10002;
  VilnorWindow = 'KestraToVilnor';

  Done = 0; Usage = 1; NoComponent = 3; NoDatabase = 4; CallFailed = 5;

procedure Print(const Line: string);
begin
  Writeln(Line);
  Flush(Output);
end;

function Fail(Code: Integer; const Line: string): Integer;
begin
  Writeln(ErrOutput, 'VilnorSample: ' + Line);
  Result := Code;
end;

function ErrorText(Error: Exception): string;
var
  Info: IErrorInfo;
  Description: WideString;
begin
  Result := Error.Message;
  if Error is EOleSysError then
  begin
    // What CreateComObject leaves behind; its exception has only the code.
    if (GetErrorInfo(0, Info) = S_OK) and (Info.GetDescription(Description) = S_OK) then
      Result := Description;
    Result := '0x' + IntToHex(EOleSysError(Error).ErrorCode, 8) + ' ' + Result;
  end;
  // A driver's text may have several lines.
  Result := StringReplace(Result, #13, ' ', [rfReplaceAll]);
  Result := StringReplace(Result, #10, ' ', [rfReplaceAll]);
end;

// --- Events. Vilnor raises them on this thread, before the call that causes them returns.

type
  // What Vilnor asks a receiver of its events for.
  IVilnorEvents = interface(IDispatch)
    ['{DE68F4B2-1C62-47A9-BF92-0D44F86E9FCD}']
  end;

  TJournalSink = class(TInterfacedObject, IDispatch, IVilnorEvents)
  public
    function GetTypeInfoCount(out Count: Integer): HResult; stdcall;
    function GetTypeInfo(Index, LocaleID: Integer; out TypeInfo): HResult; stdcall;
    function GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: Integer;
      DispIDs: Pointer): HResult; stdcall;
    function Invoke(DispID: Integer; const IID: TGUID; LocaleID: Integer; Flags: Word; var Params;
      VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
  end;

function TJournalSink.GetTypeInfoCount(out Count: Integer): HResult;
begin
  Count := 0;
  Result := S_OK;
end;

function TJournalSink.GetTypeInfo(Index, LocaleID: Integer; out TypeInfo): HResult;
begin
  Result := E_NOTIMPL;
end;

function TJournalSink.GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: Integer;
  DispIDs: Pointer): HResult;
begin
  Result := E_NOTIMPL;
end;

function TJournalSink.Invoke(DispID: Integer; const IID: TGUID; LocaleID: Integer; Flags: Word;
  var Params; VarResult, ExcepInfo, ArgErr: Pointer): HResult;
begin
  if DispID = DISPID_UpdateJournal then
    Print('Event UpdateJournal: a host shows its journal again.');
  Result := S_OK;
end;

// --- Results that nobody read, for example because the host was closed before the answer came.

type
  TResultFile = record
    Name: string;     // 'OutNewCase4711 2026-11-16 14.05.00.xml': Vilnor has set it aside
    OwnName: string;  // 'OutNewCase4711.xml': the name that Vilnor reads
    Kind: string;     // 'NewCase'
    Key: Integer;
    Written: Int64;
  end;

  TWaitingResults = class
  private
    FVilnor: _BVilnor;
    FFolder: string;
    FStuck: TStringList;
    function IsResult(const Search: TSearchRec; out Found: TResultFile): Boolean;
    function FindOldest(out Oldest: TResultFile): Boolean;
    function Count(const OwnName: string): Integer;
    function GiveOwnName(const Found: TResultFile): Boolean;
    procedure Read(const Found: TResultFile);
  public
    constructor Create(const Vilnor: _BVilnor; const Folder: string);
    destructor Destroy; override;
    procedure ReadAll;
  end;

constructor TWaitingResults.Create(const Vilnor: _BVilnor; const Folder: string);
begin
  FVilnor := Vilnor;
  FFolder := IncludeTrailingPathDelimiter(Folder);
  FStuck := TStringList.Create;
end;

destructor TWaitingResults.Destroy;
begin
  FStuck.Free;
  inherited;
end;

// Reads them, the oldest first. Deletes and overwrites nothing, so it may be interrupted at any
// moment. Call it at the start and when the database is back, while no request is open.
procedure TWaitingResults.ReadAll;
var
  Found: TResultFile;
  Before: Integer;
begin
  while FindOldest(Found) do
  begin
    Before := Count(Found.OwnName);
    if GiveOwnName(Found) then
      Read(Found);
    if Count(Found.OwnName) < Before then
      Print(Found.Name + ' is dealt with')
    else
    begin
      // Those with the same key that are newer must not be read before it.
      FStuck.Add(Found.OwnName);
      Print(Found.Name + ' stays: a person must look at it');
    end;
  end;
end;

function TWaitingResults.IsResult(const Search: TSearchRec; out Found: TResultFile): Boolean;
const
  Kinds: array [0..2] of string = ('NewFHP', 'NewCase', 'ExistCase');
var
  I, Digits: Integer;
  Start: string;
begin
  Result := False;
  Found.Name := Search.Name;
  Found.Written := Int64(Search.FindData.ftLastWriteTime);
  for I := 0 to 2 do
  begin
    Start := 'Out' + Kinds[I];
    if Copy(Search.Name, 1, Length(Start)) = Start then
    begin
      Digits := Length(Start) + 1;
      while (Digits <= Length(Search.Name)) and CharInSet(Search.Name[Digits], ['-', '0'..'9']) do
        Inc(Digits);
      Found.Kind := Kinds[I];
      // Vilnor writes no leading zeros; anything else after the digits is no name of Vilnor's.
      Result := TryStrToInt(Copy(Search.Name, Length(Start) + 1, Digits - Length(Start) - 1),
        Found.Key);
      Found.OwnName := Start + IntToStr(Found.Key) + '.xml';
      Result := Result and ((Search.Name = Found.OwnName) or
        (Copy(Search.Name, 1, Digits) = Start + IntToStr(Found.Key) + ' '));
    end;
  end;
end;

// Of two results with the same time, the one that was set aside is older.
function TWaitingResults.FindOldest(out Oldest: TResultFile): Boolean;
var
  Search: TSearchRec;
  Each: TResultFile;
begin
  Result := False;
  if FindFirst(FFolder + 'Out*.xml', faAnyFile and not faDirectory, Search) = 0 then
    repeat
      if IsResult(Search, Each) and (FStuck.IndexOf(Each.OwnName) < 0) and
        (not Result or (Each.Written < Oldest.Written) or
        ((Each.Written = Oldest.Written) and (Each.Name <> Each.OwnName))) then
      begin
        Oldest := Each;
        Result := True;
      end;
    until FindNext(Search) <> 0;
  FindClose(Search);
end;

function TWaitingResults.Count(const OwnName: string): Integer;
var
  Search: TSearchRec;
  Each: TResultFile;
begin
  Result := 0;
  if FindFirst(FFolder + 'Out*.xml', faAnyFile and not faDirectory, Search) = 0 then
    repeat
      if IsResult(Search, Each) and (Each.OwnName = OwnName) then
        Inc(Result);
    until FindNext(Search) <> 0;
  FindClose(Search);
end;

// A newer result of that name is renamed for the time being. False if a file cannot be renamed.
function TWaitingResults.GiveOwnName(const Found: TResultFile): Boolean;
var
  Aside: string;
  I: Integer;
begin
  Result := True;
  if Found.Name = Found.OwnName then
    Exit;
  if FileExists(FFolder + Found.OwnName) then
  begin
    I := 0;
    repeat
      Inc(I);
      Aside := FFolder + ChangeFileExt(Found.OwnName, '') + ' waiting ' + IntToStr(I) + '.xml';
    until not FileExists(Aside);
    Result := RenameFile(FFolder + Found.OwnName, Aside);
  end;
  Result := Result and RenameFile(FFolder + Found.Name, FFolder + Found.OwnName);
end;

procedure TWaitingResults.Read(const Found: TResultFile);
var
  Key: Integer;
begin
  Key := Found.Key;
  if Found.Kind = 'NewFHP' then
    FVilnor.ReadNewFHP(Key)
  else if Found.Kind = 'NewCase' then
    FVilnor.ReadNewCase(Key)
  else
    FVilnor.ReadExistCase(Key);
end;

// --- The session.

procedure Init(const Vilnor: _BVilnor; const Connection: string; dbType: Smallint);
var
  ConnectionParameter: WideString;
  KestraLangID: Smallint;
begin
  ConnectionParameter := Connection;
  KestraLangID := 1;
  Vilnor.InitVilnor(ConnectionParameter, KestraLangID, dbType);
end;

// Vilnor reports a failing database in message boxes. Only a DBVilnor returns the error, when it is
// created; so a host that creates one first can tell the user in its own words. It must release it,
// because it keeps the database open.
function DatabaseError: string;
var
  Database: _DBVilnor;
begin
  Result := '';
  try
    Database := CoDBVilnor.Create;
    Database := nil;
  except
    on Error: Exception do
      Result := ErrorText(Error);
  end;
end;

procedure AskWhetherItFits(const Vilnor: _BVilnor; FHPId: Integer);
var
  ErrCode: Smallint;
  ErrMsg: WideString;
begin
  ErrCode := 0;
  ErrMsg := '';
  if Vilnor.OKToSend(FHPId, ErrCode, ErrMsg) then
    Print('OKToSend ' + IntToStr(FHPId) + ': yes')
  else
    Print('OKToSend ' + IntToStr(FHPId) + ': no, ' + IntToStr(ErrCode) + ' ' + ErrMsg);
end;

// A host with forms has such a loop already and needs nothing more. This program ends when the
// answer has been read; it also ends with Ctrl+C, because the user may never answer.
procedure RunUntilAnswered(PID: Integer);
var
  Message: TMsg;
  Window: array [0..31] of Char;
begin
  while Integer(GetMessage(Message, 0, 0, 0)) > 0 do
  begin
    Window[0] := #0;
    GetClassName(Message.hwnd, Window, Length(Window));
    TranslateMessage(Message);
    DispatchMessage(Message);  // in here Vilnor reads the result and changes the database
    if (Message.message = NewCaseAnswer) and (Integer(Message.wParam) = PID) and
      (string(Window) = VilnorWindow) then
      Exit;
  end;
end;

function Play(const Vilnor: _BVilnor): Integer;
var
  PID, BID, RID: Integer;
  Error: string;
  Waiting: TWaitingResults;
begin
  Init(Vilnor, ParamStr(1), StrToInt(ParamStr(2)));
  Print('Vilnor is ready.');
  Error := DatabaseError;
  if Error <> '' then
    Exit(Fail(NoDatabase, 'the database cannot be opened; check the connection string: ' + Error));
  Waiting := TWaitingResults.Create(Vilnor, ParamStr(3));
  try
    Waiting.ReadAll;
  finally
    Waiting.Free;
  end;
  AskWhetherItFits(Vilnor, StrToInt(ParamStr(7)));
  PID := StrToInt(ParamStr(4));
  BID := StrToInt(ParamStr(5));
  RID := StrToInt(ParamStr(6));
  Vilnor.OpenWithNewCase(PID, BID, RID);
  Print('A new case for patient ' + IntToStr(PID) + ': waiting for Vilnor Link''s answer ' +
    '(Ctrl+C ends this sample).');
  RunUntilAnswered(PID);
  Print('The answer has been read: a host shows its journal again.');
  Result := Done;
end;

function Run: Integer;
var
  Vilnor: _BVilnor;
  Sink: IDispatch;
  Cookie: {$IFDEF FPC}DWORD{$ELSE}Longint{$ENDIF};
begin
  try
    Vilnor := CoBVilnor.Create;
  except
    on Error: Exception do
      Exit(Fail(NoComponent, 'Vilnor.dll is not registered on this computer; an administrator ' +
        'installs Vilnor-1.5.N.msi: ' + ErrorText(Error)));
  end;
  Result := CallFailed;
  Sink := TJournalSink.Create;
  InterfaceConnect(Vilnor, DIID___BVilnor, Sink, Cookie);
  try
    Result := Play(Vilnor);
  except
    on Error: Exception do
      Fail(CallFailed, 'a call failed: ' + ErrorText(Error));
  end;
  InterfaceDisconnect(Vilnor, DIID___BVilnor, Cookie);
  Vilnor := nil;
  Print('Vilnor is released.');
end;

begin
  // ComObj has made this thread a single-threaded apartment: the answers arrive as window messages.
  if ParamCount <> 7 then
    ExitCode := Fail(Usage, 'usage: VilnorSample CONNECTION DBTYPE FOLDER PID BID RID FHPID')
  else
    ExitCode := Run;
end.
