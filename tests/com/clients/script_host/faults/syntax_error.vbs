host.Expect 0
x = = 1
