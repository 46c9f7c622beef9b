' A fresh store for one script: a SQLite file reached through ODBC, with two job types, of which this machine can
' create the first, the container's two application states and a RUNTIME subsystem.

Const Qualifier = "kx_"
Const ProductionState = "{00000000-0000-4000-8000-0000000000E1}"
Const DevelopmentState = "{00000000-0000-4000-8000-0000000000E2}"

Function FreshStore(helper, file)
    Dim options, statement
    Set options = CreateObject("Scripting.Dictionary")
    host.DeleteFile file
    FreshStore = "Driver={SQLite3};Database=" & file & ";"
    For Each statement In Split(helper.JobTableCreationScript(options, dspSqlite, Qualifier), ";" & vbLf)
        If statement <> "" Then host.Execute FreshStore, statement
    Next
    CreateStandInTables FreshStore
    host.Execute FreshStore, "INSERT INTO kx_JobType VALUES ('REPORT', 'Reports', 'kxTimer_83.Timer', 'Mail_83.Sender')"
    host.Execute FreshStore, "INSERT INTO kx_JobType VALUES ('ELSEWHERE', 'Of another machine', 'No_83.Such', '')"
    host.Execute FreshStore, "INSERT INTO kx_applicationstate VALUES ('PRODUCTION', '" & ProductionState & "')"
    host.Execute FreshStore, "INSERT INTO kx_applicationstate VALUES ('DEVELOPMENT', '" & DevelopmentState & "')"
    host.Execute FreshStore, "INSERT INTO kx_subsystem VALUES ('RUNTIME')"
End Function

' The tables of the application's own components.
Sub CreateStandInTables(db)
    host.Execute db, "CREATE TABLE kx_systemflag (flagname text NOT NULL PRIMARY KEY, flagvalue text)"
    host.Execute db, "CREATE TABLE kx_adminhistory (historyid text, writtendt text, actioncode text, detail text," & _
        " usercontext text)"
    host.Execute db, "CREATE TABLE kx_applicationstate (stateid text NOT NULL PRIMARY KEY, stateguid text)"
    host.Execute db, "CREATE TABLE kx_subsystem (subsystemid text NOT NULL PRIMARY KEY)"
End Sub

' How many rows of a table meet a condition, counted without the library.
Function CountOf(db, table, condition)
    CountOf = CLng(host.Execute(db, "SELECT COUNT(*) FROM kx_" & table & " WHERE " & condition))
End Function

' One cell of a result.
Function Cell(rows, column, row)
    Cell = rows(column, row)
End Function

' Checks the pending error and clears it. To be called where On Error Resume Next holds.
Sub CheckError(what, number, source, description)
    Dim pending
    pending = Hex(Err.Number) & " " & Err.Source & ": " & Err.Description
    Err.Clear
    host.Check what, Hex(number) & " " & source & ": " & description, pending
End Sub
