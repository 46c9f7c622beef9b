' After the example has run.
host.Expect 3
host.Check "what it prints", "March is QUEUED, 3 items" & vbLf, WScript.Written
host.Check "the items in order", "north,south,west", _
    host.Execute(WScript.Arguments(0), "SELECT group_concat(identifier) FROM (SELECT identifier FROM kx_JobItem ORDER BY sequence)")
host.Check "the job", "1", _
    host.Execute(WScript.Arguments(0), "SELECT COUNT(*) FROM kx_job WHERE jobstateid = 'QUEUED' AND totalitemcount = 3")
