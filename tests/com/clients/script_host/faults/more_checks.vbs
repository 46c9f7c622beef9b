host.Expect 1
host.Check "equal", 1, 1
host.Check "one too many", 1, 1
