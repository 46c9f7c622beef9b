// The store that these scripts are given: ../store/fresh_store.vbs made it.

var dspSqlite = 5;
var qualifier = "kx_";
var productionState = "{00000000-0000-4000-8000-0000000000E1}";
var developmentState = "{00000000-0000-4000-8000-0000000000E2}";
var db = "Driver={SQLite3};Database=" + host.Argument(0) + ";";

// One column of a result as an array of this language.
function column(rows, number) {
    var values = [];
    var array = new VBArray(rows);
    for (var row = array.lbound(2); row <= array.ubound(2); ++row) values.push(array.getItem(number, row));
    return values;
}
