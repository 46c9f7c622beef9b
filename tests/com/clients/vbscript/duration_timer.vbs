' The stopwatch runs from its creation on, and Start takes it back to zero.
host.Expect 5

Dim older, younger, both
Set older = CreateObject("Job_83.DurationTimer")
Set younger = CreateObject("Job_83.DurationTimer")
both = younger.Duration
host.Check "a duration is a Double", "Double", TypeName(both)
host.Check "it runs from the creation on", True, older.Duration >= both
Do
Loop Until younger.Duration > both + 0.01
host.Check "it runs on", True, younger.Duration > both
older.Start
both = older.Duration
host.Check "Start begins again", True, both < younger.Duration

On Error Resume Next
older.Duration = 1
host.Check "it cannot be set", 438, Err.Number
