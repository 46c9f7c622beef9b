// A fresh store for one script: a SQLite file reached through ODBC, with a job type that this machine can create,
// the container's two application states and a RUNTIME subsystem.

var dspSqlite = 5;
var qualifier = "kx_";
var productionState = "{00000000-0000-4000-8000-0000000000E1}";
var developmentState = "{00000000-0000-4000-8000-0000000000E2}";

function freshStore(helper, file) {
    var db = "Driver={SQLite3};Database=" + file + ";";
    var options = new ActiveXObject("Scripting.Dictionary");
    var statements = helper.JobTableCreationScript(options, dspSqlite, qualifier).split(";\n");
    host.DeleteFile(file);
    for (var i = 0; i < statements.length; ++i) {
        if (statements[i] !== "") host.Execute(db, statements[i]);
    }
    host.Execute(db, "CREATE TABLE kx_systemflag (flagname text NOT NULL PRIMARY KEY, flagvalue text)");
    host.Execute(db, "CREATE TABLE kx_adminhistory (historyid text, writtendt text, actioncode text, detail text," +
        " usercontext text)");
    host.Execute(db, "CREATE TABLE kx_applicationstate (stateid text NOT NULL PRIMARY KEY, stateguid text)");
    host.Execute(db, "CREATE TABLE kx_subsystem (subsystemid text NOT NULL PRIMARY KEY)");
    host.Execute(db, "INSERT INTO kx_JobType VALUES ('REPORT', 'Reports', 'kxTimer_83.Timer', '')");
    host.Execute(db, "INSERT INTO kx_applicationstate VALUES ('PRODUCTION', '" + productionState + "')");
    host.Execute(db, "INSERT INTO kx_applicationstate VALUES ('DEVELOPMENT', '" + developmentState + "')");
    host.Execute(db, "INSERT INTO kx_subsystem VALUES ('RUNTIME')");
    return db;
}

// One column of a result as an array of this language.
function column(rows, number) {
    var values = [];
    var array = new VBArray(rows);
    for (var row = array.lbound(2); row <= array.ubound(2); ++row) values.push(array.getItem(number, row));
    return values;
}
