' The store that these scripts are given: ../store/fresh_store.vbs made it.

Const Qualifier = "kx_"
Const ProductionState = "{00000000-0000-4000-8000-0000000000E1}"
Const DevelopmentState = "{00000000-0000-4000-8000-0000000000E2}"

Dim db
db = "Driver={SQLite3};Database=" & host.Argument(0) & ";"

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
