{$mode objfpc}{$H+}
{ Counts a client's checks: one that does not run is noticed as one that fails. }
unit Checks;

interface

procedure Check(const What, Expected, Actual: string);
procedure Check(const What: string; Expected, Actual: Int64);
procedure Check(const What: string; Actual: Boolean);
{ Ends the program: status 0 when this many checks ran and none failed. }
procedure Finish(Expected: Integer);

implementation

uses SysUtils;

var
  Ran, Failed: Integer;

procedure Check(const What, Expected, Actual: string);
begin
  Inc(Ran);
  if Expected = Actual then Exit;
  Inc(Failed);
  WriteLn(StdErr, 'failed: ', What);
  WriteLn(StdErr, '    expected ', Expected);
  WriteLn(StdErr, '    but got  ', Actual);
end;

procedure Check(const What: string; Expected, Actual: Int64);
begin
  Check(What, IntToStr(Expected), IntToStr(Actual));
end;

procedure Check(const What: string; Actual: Boolean);
begin
  Check(What, 'True', BoolToStr(Actual, True));
end;

procedure Finish(Expected: Integer);
begin
  if Ran <> Expected then WriteLn(StdErr, Ran, ' checks ran, ', Expected, ' were announced');
  if Failed > 0 then WriteLn(StdErr, Failed, ' of ', Ran, ' checks failed');
  if (Ran = Expected) and (Failed = 0) then Halt(0);
  Halt(1);
end;

end.
