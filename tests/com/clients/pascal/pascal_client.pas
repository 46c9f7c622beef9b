{$mode objfpc}{$H+}
{ A compiled late-binding client: each of the 35 methods, with named arguments wherever there are some to name,
  typed variables by reference, and arrays that no script can make. }
program pascal_client;

uses SysUtils, Variants, ActiveX, ComObj, Checks;

const
  Sqlite = 5;
  Qualifier: WideString = 'kx_';
  JobGuid: WideString = '{00000000-0000-4000-8000-00000000A001}';
  StrayGuid: WideString = '{00000000-0000-4000-8000-00000000A002}';
  LockGuid: WideString = '{00000000-0000-4000-8000-00000000D001}';
  ProductionState: WideString = '{00000000-0000-4000-8000-0000000000E1}';
  DevelopmentState: WideString = '{00000000-0000-4000-8000-0000000000E2}';

var
  Helper: OleVariant;
  Store: WideString;

{ A cell of a result as text; NULL is "null". }
function Cell(const Rows: OleVariant; Column, Row: Integer): string;
var
  Value: OleVariant;
begin
  Value := Rows[Column, Row];
  if VarIsNull(Value) then Cell := 'null' else Cell := Value;
end;

function RowCount(const Rows: OleVariant): Integer;
begin
  if VarIsEmpty(Rows) then Exit(0);
  RowCount := VarArrayHighBound(Rows, 2) + 1;
end;

procedure Vocabulary;
var
  Options: OleVariant;
  Script: string;
begin
  Check('Version', '8.3.1202.0', string(Helper.Version));
  Check('IsJobComplete', Boolean(Helper.IsJobComplete(StateId := 'COMPLETE')));
  Check('IsJobRunning', not Boolean(Helper.IsJobRunning(StateId := 'COMPLETE')));
  Check('ParametersTagName', 'parameters', string(Helper.ParametersTagName));
  Check('ParameterTagName', 'parameter', string(Helper.ParameterTagName));
  Options := CreateOleObject('Scripting.Dictionary');
  Script := Helper.JobTableCreationScript(providerOptions := Options, NameQualifier := Qualifier, Provider := Sqlite);
  Check('JobTableCreationScript', 1, Pos('CREATE TABLE IF NOT EXISTS kx_job (', Script));
end;

procedure Creation;
var
  Rows: OleVariant;
begin
  { In another order than the method's. }
  Helper.CreateJob(TotalItemCount := 4, Parameters := '<parameters/>', ApplicationStateGUID := ProductionState,
    Description := 'March', JobTypeID := 'REPORT', GUID := JobGuid, NameQualifier := Qualifier, Provider := Sqlite,
    ConnectionString := Store);
  Rows := Helper.GetJob(ConnectionString := Store, Provider := Sqlite, NameQualifier := Qualifier,
    ApplicationStateGUID := ProductionState);
  Check('GetJob by its last argument', 1, RowCount(Rows));
  Check('GetJob has 14 columns', 13, VarArrayHighBound(Rows, 1));
  Check('GetJob', 'March CREATING 4', Cell(Rows, 1, 0) + ' ' + Cell(Rows, 4, 0) + ' ' + Cell(Rows, 6, 0));
  Rows := Helper.GetJob(ConnectionString := Store, Provider := Sqlite, NameQualifier := Qualifier,
    JobStateID := 'QUEUED');
  Check('GetJob of a state without jobs', VarIsEmpty(Rows));
  Check('GetJobType', 'Reports', Cell(Helper.GetJobType(Store, Sqlite, Qualifier, JobTypeID := 'REPORT'), 1, 0));
  Check('GetJobParameters', '<parameters/>',
    string(Helper.GetJobParameters(Store, Sqlite, Qualifier, JobGUID := JobGuid)));
  Helper.UpdateJobStatus(Store, Sqlite, NameQualfier := Qualifier, JobStateID := 'QUEUED', JobGUID := JobGuid);
  Check('UpdateJobStatus', 'QUEUED', Cell(Helper.GetJob(Store, Sqlite, Qualifier), 4, 0));
end;

procedure Items;
var
  Texts, Values, Rows: OleVariant;
  Item: WideString;
begin
  Values := VarArrayCreate([1, 2], varVariant);
  Values[1] := 'thing 1';
  Values[2] := 2;
  Helper.CreateSimpleJobItems(Store, Sqlite, Qualifier, JobGuid, IdentifierGUIDs := Values);
  Rows := Helper.GetJobItems(Store, Sqlite, Qualifier, JobGUID := JobGuid);
  Check('an array from 1', 'thing 1 0, 2 1',
    Cell(Rows, 1, 0) + ' ' + Cell(Rows, 3, 0) + ', ' + Cell(Rows, 1, 1) + ' ' + Cell(Rows, 3, 1));
  Texts := VarArrayCreate([0, 0], varOleStr);
  Texts[0] := WideString('thing 3');
  Helper.CreateSimpleJobItems(Store, Sqlite, Qualifier, StrayGuid, IdentifierGUIDs := Texts);
  Check('an array of texts', 'thing 3', Cell(Helper.GetJobItems(Store, Sqlite, Qualifier, StrayGuid), 1, 0));
  Item := Helper.CreateJobItem(Store, Sqlite, Qualifier, JobGuid, IdentifierGUID := 'thing 4', Data := 'its data',
    Sequence := 9);
  Check('CreateJobItem', 38, Length(Item));
  Check('GetJobItem', 'its data',
    Cell(Helper.GetJobItem(Store, Sqlite, Qualifier, JobItemGUID := Item), 2, 0));
end;

procedure NextJob;
var
  Job: WideString;
  Rank: Double;
  AnyJob, AnyRank: OleVariant;
begin
  Job := '';
  Rank := 0;
  Helper.GetNextJob(Store, Sqlite, Qualifier, Job, Rank);
  Check('GetNextJob fills a typed text', string(JobGuid), string(Job));
  Check('GetNextJob fills a typed number', Rank = 1);
  AnyJob := '';
  AnyRank := 0;
  Helper.GetNextJob(Store, Sqlite, Qualifier, AnyJob, AnyRank);
  Check('GetNextJob fills a variant with the job', string(JobGuid), string(AnyJob));
  Check('GetNextJob fills a variant with the rank', Double(AnyRank) = 1);
end;

{ One column of a task. }
function TaskCell(const Task: WideString; Column: Integer): string;
var
  Rows: OleVariant;
  Row: Integer;
begin
  TaskCell := 'no such task';
  Rows := Helper.GetJobTasks(ConnectionString := Store, Provider := Sqlite, NameQualifier := Qualifier);
  for Row := 0 to RowCount(Rows) - 1 do
    if Cell(Rows, 0, Row) = string(Task) then TaskCell := Cell(Rows, Column, Row);
end;

procedure Tasks;
var
  Task, Lock: WideString;
begin
  Task := Helper.RegisterJobTask(ConnectionString := Store, NameQualifier := Qualifier, Description := Null,
    JobGUID := JobGuid, User := 'a user', MachineName := 'MACHINE1', PID := 71, ThreadID := 72);
  Check('RegisterJobTask', 'null a user 71 72', TaskCell(Task, 1) + ' ' + TaskCell(Task, 8) + ' ' +
    TaskCell(Task, 4) + ' ' + TaskCell(Task, 5));
  Helper.UpdateTaskRegistration(Store, Qualifier, Task, LastJobItem := 'thing 1', JobTaskStateID := '');
  Check('UpdateTaskRegistration', 'thing 1 RUNNING', TaskCell(Task, 6) + ' ' + TaskCell(Task, 9));
  Helper.UpdateTaskCommand(Store, Qualifier, Task, Command := 'STOP');
  Check('UpdateTaskCommand', 'STOP', TaskCell(Task, 7));
  Helper.UpdateJobTaskLock(Store, Qualifier, Task, LockGUID := LockGuid);
  Check('UpdateJobTaskLock', string(LockGuid), TaskCell(Task, 12));
  try
    Lock := Helper.GetNewLockExcludingInterlopers(Store, Qualifier, JobGuid, Task, OldLockGUID := LockGuid,
      NewLockDuration := 60.5);
    Check('a job without a lock gives none', 'an error', string(Lock));
  except
    on Error: EOleException do
      Check('GetNewLockExcludingInterlopers', '800402EA Job_83.JobHelper.GetNewLockExcludingInterlopers',
        IntToHex(Error.ErrorCode, 8) + ' ' + Error.Source);
  end;
  Helper.UnRegisterJobTaskIndicatingStatus(Store, Qualifier, Task, Succeeded := False);
  Check('UnRegisterJobTaskIndicatingStatus', 'FAILED', TaskCell(Task, 9));
  Helper.UnRegisterJobTask(Store, Qualifier, JobTaskGUID := Task);
  Check('UnRegisterJobTask', 'COMPLETE', TaskCell(Task, 9));
end;

procedure Progress;
var
  Item, Task: WideString;
begin
  Item := Cell(Helper.GetJobItems(Store, Sqlite, Qualifier, JobGuid), 0, 0);
  Task := Cell(Helper.GetJobTasks(Store, Sqlite, Qualifier), 0, 0);
  Helper.UpdateJobItemStatus(Store, Sqlite, NameQualfier := Qualifier, JobItemGUID := Item,
    JobItemStateID := 'COMPLETE', StartISODateTime := '', EndISODateTime := '2026-03-01T09:31:00.000Z',
    JobTaskGUID := Task);
  Check('GetJobItemExecutionStatistics', 'COMPLETE  2026-03-01T09:31:00.000Z',
    Cell(Helper.GetJobItemExecutionStatistics(Store, Sqlite, Qualifier, JobGuid, SequenceNumber := 0), 0, 0) + ' ' +
    Cell(Helper.GetJobItemExecutionStatistics(Store, Sqlite, Qualifier, JobGuid, SequenceNumber := 0), 1, 0) + ' ' +
    Cell(Helper.GetJobItemExecutionStatistics(Store, Sqlite, Qualifier, JobGuid, SequenceNumber := 0), 2, 0));
  Check('JobItemsAtState', '1',
    Cell(Helper.JobItemsAtState(Store, Qualifier, JobGuid, StateId := 'COMPLETE'), 1, 0));
  Check('OwnersOfJobItemsAtState', 'MACHINE1',
    Cell(Helper.OwnersOfJobItemsAtState(Store, Qualifier, JobGuid, StateId := 'COMPLETE'), 0, 0));
  Check('GetJobExecutionStatistics', string(ProductionState),
    Cell(Helper.GetJobExecutionStatistics(Store, Sqlite, Qualifier, JobGUID := JobGuid), 12, 0));
  Check('GetJobExecutionStatisticsAllowMissing',
    VarIsEmpty(Helper.GetJobExecutionStatisticsAllowMissing(Store, Sqlite, Qualifier, JobGUID := StrayGuid)));
  Helper.AppendJobFailureNote(Store, Sqlite, NameQualfier := Qualifier, JobGUID := JobGuid,
    AdditionalNote := 'of the job');
  Check('AppendJobFailureNote', Pos('of the job', Cell(Helper.GetJob(Store, Sqlite, Qualifier), 13, 0)) > 0);
  Helper.AppendJobItemFailureNote(Store, Sqlite, NameQualfier := Qualifier, JobItemGUID := Item,
    AdditionalNote := 'of the item');
  Check('AppendJobItemFailureNote',
    Pos('of the item', Cell(Helper.GetJobItem(Store, Sqlite, Qualifier, Item), 6, 0)) > 0);
end;

procedure Removal;
begin
  Helper.CreateJob(Store, Sqlite, Qualifier, StrayGuid, 'REPORT', '', ApplicationStateGUID := '{another}',
    Parameters := '', TotalItemCount := 1);
  Helper.RemoveIrrelevantJobsInAllContainers(ConnectionString := Store, Provider := Sqlite,
    NameQualifier := Qualifier);
  Check('RemoveIrrelevantJobsInAllContainers', 1, RowCount(Helper.GetJob(Store, Sqlite, Qualifier)));
  Helper.RemoveIrrelevantJobsInContainer(Store, Sqlite, Qualifier, ProductionStateGUID := ProductionState,
    DevelopmentStateGUID := DevelopmentState);
  Check('RemoveIrrelevantJobsInContainer', 1, RowCount(Helper.GetJob(Store, Sqlite, Qualifier)));
  Helper.RemoveJobAndItems(Store, Sqlite, NameQualfier := Qualifier, JobGUID := JobGuid);
  Check('RemoveJobAndItems', 0, RowCount(Helper.GetJob(Store, Sqlite, Qualifier)));
end;

{ The error of a call that must fail: class, number, source and text. }
function ErrorOf(Call: TProcedure): string;
begin
  ErrorOf := 'no error';
  try
    Call();
  except
    on Error: EOleException do
      ErrorOf := 'EOleException ' + IntToHex(Error.ErrorCode, 8) + ' ' + Error.Source + ': ' + Error.Message;
    on Error: EOleSysError do ErrorOf := 'EOleSysError ' + IntToHex(Error.ErrorCode, 8);
    on Error: EOleError do ErrorOf := 'EOleError ' + Error.Message;
  end;
end;

procedure AskForUnknownState;
begin
  Helper.IsJobComplete(StateId := 'FAILED');
end;

procedure UseUnsafeKey;
begin
  Helper.GetJobItems(Store, Sqlite, Qualifier, JobGUID := 'x;');
end;

procedure NameUnknownArgument;
begin
  Helper.IsJobComplete(State := 'COMPLETE');
end;

procedure NameUnknownMethod;
begin
  Helper.NoSuchMethod;
end;

procedure LeaveOutRequiredArgument;
begin
  Helper.UpdateTaskCommand(Store, Qualifier, Command := 'STOP');
end;

procedure PassWrongType;
begin
  Helper.UpdateJobStatus(Store, Provider := 'five', NameQualfier := Qualifier, JobGUID := JobGuid,
    JobStateID := 'READY');
end;

procedure CreateUnknownClass;
begin
  CreateOleObject('Job_83.NoSuchClass');
end;

procedure Errors;
begin
  Check('an error of the library',
    'EOleException 800402E7 Job_83.JobHelper.IsJobComplete: The Job StateID ''FAILED'' is not known',
    ErrorOf(@AskForUnknownState));
  Check('a refusal by the guard',
    'EOleException 800402BD kxJob.InputGuard: The parameter JobGUID is refused: it holds a semicolon (;)',
    ErrorOf(@UseUnsafeKey));
  Check('an unknown argument', 'EOleError Method ''IsJobComplete'' is not supported by automation object', ErrorOf(@NameUnknownArgument));
  Check('an unknown method', 'EOleError Method ''NoSuchMethod'' is not supported by automation object', ErrorOf(@NameUnknownMethod));
  Check('a required argument left out', 'EOleSysError 8002000F', ErrorOf(@LeaveOutRequiredArgument));
  Check('a text that is no number', 'EOleSysError 80020005', ErrorOf(@PassWrongType));
  Check('an unknown class', 'EOleSysError 800401F3', ErrorOf(@CreateUnknownClass));
end;

procedure Timer;
var
  Stopwatch: OleVariant;
begin
  Stopwatch := CreateOleObject('Job_83.DurationTimer');
  Stopwatch.Start;
  Check('Duration', Double(Stopwatch.Duration) >= 0);
end;

begin
  Helper := CreateOleObject('Job_83.JobHelper');
  Store := WideString('Driver={SQLite3};Database=' + ParamStr(1) + ';');
  Vocabulary;
  Creation;
  Items;
  NextJob;
  Tasks;
  Progress;
  Removal;
  Errors;
  Timer;
  Finish(46);
end.
