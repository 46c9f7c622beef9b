host.Expect 2
host.Check "equal", 1, 1
host.Check "a number is no text", 1, "1"
