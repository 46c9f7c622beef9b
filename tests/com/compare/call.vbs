' Calls one method of JobHelper by its published name and prints one line of JSON, as `kxjob call` does:
' METHOD --Argument value...
host.Expect 0

Dim helper, method, i, result, hasResult, byReference, job, rank, state, options
Set helper = CreateObject("Job_83.JobHelper")
method = host.Argument(0)
byReference = ""

' The text of an argument; what is left out is empty.
Function A(name)
    A = ""
    For i = 1 To host.ArgumentCount() - 2 Step 2
        If host.Argument(i) = "--" & name Then A = host.Argument(i + 1)
    Next
End Function

' The array that a JSON list of texts stands for, or the text itself.
Function ListOf(text)
    Dim table(1, 1)
    If text = "[]" Then
        ListOf = Array()
    ElseIf Left(text, 2) = "[[" Then
        ListOf = table
    ElseIf Left(text, 1) = "[" Then
        ListOf = Split(Mid(text, 3, Len(text) - 4), """,""")
    Else
        ListOf = text
    End If
End Function

Sub Answer(value)
    result = value
    hasResult = True
End Sub

' The engine keeps only the lower half of an error number of its own facility.
Function FullNumber(number)
    FullNumber = number
    If number > 0 And number < 65536 Then FullNumber = &H800A0000 + number
End Function

Sub CallMethod
    Dim c, p, q, sic
    c = A("ConnectionString")
    p = A("Provider")
    q = A("NameQualifier")
    sic = A("NameQualfier")
    Select Case method
        Case "Version" Answer helper.Version()
        Case "IsJobComplete" Answer helper.IsJobComplete(A("StateId"))
        Case "IsJobRunning" Answer helper.IsJobRunning(A("StateId"))
        Case "ParametersTagName" Answer helper.ParametersTagName()
        Case "ParameterTagName" Answer helper.ParameterTagName()
        Case "JobTableCreationScript"
            Set options = CreateObject("Scripting.Dictionary")
            Answer helper.JobTableCreationScript(options, p, q)
        Case "RegisterJobTask"
            Answer helper.RegisterJobTask(c, q, A("Description"), A("JobGUID"), A("User"), A("MachineName"), A("PID"), _
                A("ThreadID"))
        Case "UnRegisterJobTask" helper.UnRegisterJobTask c, q, A("JobTaskGUID")
        Case "UnRegisterJobTaskIndicatingStatus"
            helper.UnRegisterJobTaskIndicatingStatus c, q, A("JobTaskGUID"), A("Succeeded")
        Case "UpdateTaskRegistration"
            helper.UpdateTaskRegistration c, q, A("JobTaskGUID"), A("LastJobItem"), A("JobTaskStateID")
        Case "UpdateJobTaskLock" helper.UpdateJobTaskLock c, q, A("JobTaskGUID"), A("LockGUID")
        Case "UpdateTaskCommand" helper.UpdateTaskCommand c, q, A("JobTaskGUID"), A("Command")
        Case "GetNewLockExcludingInterlopers"
            Answer helper.GetNewLockExcludingInterlopers(c, q, A("JobGUID"), A("JobTaskGUID"), A("OldLockGUID"), _
                A("NewLockDuration"))
        Case "CreateJob"
            helper.CreateJob c, p, q, A("GUID"), A("JobTypeID"), A("Description"), A("ApplicationStateGUID"), _
                A("Parameters"), A("TotalItemCount")
        Case "CreateJobItem"
            Answer helper.CreateJobItem(c, p, q, A("JobGUID"), A("IdentifierGUID"), A("Data"), A("Sequence"))
        Case "CreateSimpleJobItems" helper.CreateSimpleJobItems c, p, q, A("JobGUID"), ListOf(A("IdentifierGUIDs"))
        Case "RemoveJobAndItems" helper.RemoveJobAndItems c, p, sic, A("JobGUID")
        Case "RemoveIrrelevantJobsInAllContainers" helper.RemoveIrrelevantJobsInAllContainers c, p, q
        Case "RemoveIrrelevantJobsInContainer"
            helper.RemoveIrrelevantJobsInContainer c, p, q, A("ProductionStateGUID"), A("DevelopmentStateGUID")
        Case "GetJob"
            state = A("ApplicationStateGUID")
            Answer helper.GetJob(c, p, q, A("JobGUID"), A("JobTypeID"), A("JobStateID"), state)
            byReference = ",""ApplicationStateGUID"":" & host.Text(state)
        Case "GetJobType" Answer helper.GetJobType(c, p, q, A("JobTypeID"))
        Case "GetJobParameters" Answer helper.GetJobParameters(c, p, q, A("JobGUID"))
        Case "GetJobItem" Answer helper.GetJobItem(c, p, q, A("JobItemGUID"))
        Case "GetJobItems" Answer helper.GetJobItems(c, p, q, A("JobGUID"))
        Case "GetJobTasks" Answer helper.GetJobTasks(c, p, q, A("JobGUID"))
        Case "GetJobExecutionStatistics" Answer helper.GetJobExecutionStatistics(c, p, q, A("JobGUID"))
        Case "GetJobExecutionStatisticsAllowMissing"
            Answer helper.GetJobExecutionStatisticsAllowMissing(c, p, q, A("JobGUID"))
        Case "GetJobItemExecutionStatistics"
            Answer helper.GetJobItemExecutionStatistics(c, p, q, A("JobGUID"), A("SequenceNumber"))
        Case "JobItemsAtState" Answer helper.JobItemsAtState(c, q, A("JobGUID"), A("StateId"))
        Case "OwnersOfJobItemsAtState" Answer helper.OwnersOfJobItemsAtState(c, q, A("JobGUID"), A("StateId"))
        Case "UpdateJobStatus" helper.UpdateJobStatus c, p, sic, A("JobGUID"), A("JobStateID")
        Case "UpdateJobItemStatus"
            helper.UpdateJobItemStatus c, p, sic, A("JobItemGUID"), A("JobItemStateID"), A("StartISODateTime"), _
                A("EndISODateTime"), A("JobTaskGUID")
        Case "AppendJobFailureNote" helper.AppendJobFailureNote c, p, sic, A("JobGUID"), A("AdditionalNote")
        Case "AppendJobItemFailureNote" helper.AppendJobItemFailureNote c, p, sic, A("JobItemGUID"), A("AdditionalNote")
        Case "GetNextJob"
            job = A("JobGUID")
            rank = CDbl("0" & A("JobRank"))
            helper.GetNextJob c, p, q, job, rank
            byReference = ",""JobGUID"":" & host.Text(job) & ",""JobRank"":" & host.Text(rank)
        Case Else Err.Raise 5, "call.vbs", "There is no method " & method
    End Select
End Sub

On Error Resume Next
CallMethod
If Err.Number <> 0 Then
    host.Write "{""error"":{""number"":" & FullNumber(Err.Number) & ",""source"":" & host.Text(Err.Source) & _
        ",""description"":" & host.Text(Err.Description) & "}}"
ElseIf hasResult Then
    host.Write "{""result"":" & host.Text(result) & byReference & "}"
Else
    host.Write "{" & Mid(byReference, 2) & "}"
End If
