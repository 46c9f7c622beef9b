' Makes the store that a client works on: a SQLite file reached through ODBC, with the tables of the library's own
' script, two job types, of which this machine can create the first, the container's two application states and a
' RUNTIME subsystem.
host.Expect 1

Const Provider = 5 ' dspSqlite
Dim helper, options, db, statement

host.DeleteFile host.Argument(0)
db = "Driver={SQLite3};Database=" & host.Argument(0) & ";"
Set helper = CreateObject("Job_83.JobHelper")
Set options = CreateObject("Scripting.Dictionary")
For Each statement In Split(helper.JobTableCreationScript(options, Provider, "kx_"), ";" & vbLf)
    If statement <> "" Then host.Execute db, statement
Next

' The tables of the application's own components.
host.Execute db, "CREATE TABLE kx_systemflag (flagname text NOT NULL PRIMARY KEY, flagvalue text)"
host.Execute db, "CREATE TABLE kx_adminhistory (historyid text, writtendt text, actioncode text, detail text," & _
    " usercontext text)"
host.Execute db, "CREATE TABLE kx_applicationstate (stateid text NOT NULL PRIMARY KEY, stateguid text)"
host.Execute db, "CREATE TABLE kx_subsystem (subsystemid text NOT NULL PRIMARY KEY)"

host.Execute db, "INSERT INTO kx_JobType VALUES ('REPORT', 'Reports', 'kxTimer_83.Timer', 'Mail_83.Sender')"
host.Execute db, "INSERT INTO kx_JobType VALUES ('ELSEWHERE', 'Of another machine', 'No_83.Such', '')"
host.Execute db, "INSERT INTO kx_applicationstate VALUES ('PRODUCTION', '{00000000-0000-4000-8000-0000000000E1}')"
host.Execute db, "INSERT INTO kx_applicationstate VALUES ('DEVELOPMENT', '{00000000-0000-4000-8000-0000000000E2}')"
host.Execute db, "INSERT INTO kx_subsystem VALUES ('RUNTIME')"

host.Check "the tables", "8", host.Execute(db, "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table'")
