' Starts the template browser as an office suite would:  cscript //nologo start.vbs ["My Templates"]
Option Explicit
Dim browser, caption, result
caption = ""
If WScript.Arguments.Count > 0 Then caption = WScript.Arguments(0)

On Error Resume Next
Set browser = CreateObject("TSBrowser.clsBrowser")
If Err.Number <> 0 Then
    WScript.Echo "Tessaly Desk is not installed (" & Hex(Err.Number) & ")."
    WScript.Quit 1
End If

' Host kind, three texts that are kept for the host, and the caption ("" for the product's own).
result = browser.Start("WORD", "", "", "", caption)
If Err.Number <> 0 Then
    ' A dialog of the browser is open, or it ended meanwhile.
    WScript.Echo "The browser could not be opened: " & Err.Description
    WScript.Quit 1
End If
On Error GoTo 0

' The window is open and belongs to the user now; it does not need this object any more.
Set browser = Nothing
WScript.Echo "The browser is open."
