host.Expect(0);
host.Execute("Driver={SQLite3};Database=:memory:", "no statement");
