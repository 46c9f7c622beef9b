host.Expect(1);
host.Check("equal", 1, 1);
noSuchFunction();
