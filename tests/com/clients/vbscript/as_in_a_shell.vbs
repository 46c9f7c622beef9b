' What a script finds in the system's own host: its arguments, and a place to write to.
Class ScriptShell
    Public Written
    Public Function Arguments(place)
        Arguments = host.Argument(place)
    End Function
    Public Sub Echo(text)
        Written = Written & text & vbLf
    End Sub
End Class
Dim WScript
Set WScript = New ScriptShell
