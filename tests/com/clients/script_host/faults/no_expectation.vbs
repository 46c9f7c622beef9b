host.Check "equal", 1, 1
