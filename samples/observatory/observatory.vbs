' Makes the sample repository: a small observatory with its instruments, people, targets and
' observations, in which every kind of property occurs.
'
'   orvane-scripthost observatory.vbs FILE

If WScript.Arguments.Count <> 1 Then
  WScript.StdErr.WriteLine "Usage: observatory.vbs FILE"
  WScript.Quit 2
End If
Set rep = CreateObject("OrvaneRepository.Repository")
rep.New

rep.MakeMetaEnum "Sky condition", Array("clear", "thin clouds", "cloudy", "rain"), "How the sky was"
rep.MakeMetaEnum "Mount", Array("equatorial", "altazimuth", "fork"), "How an instrument is mounted"

rep.MakeMetaType "Kilometres", "LongLong", "A distance in space"
rep.MakeMetaType "Count", "Byte", "Up to 255"

Set instrument = rep.MakeMetaNode("Instrument", "A telescope or camera of the observatory")
AddProperty instrument, "Aperture", "Double", "In millimetres"
AddProperty instrument, "Mounting", "Mount", ""
AddProperty instrument, "In service", "Boolean", ""
AddProperty instrument, "Price", "Currency", ""
AddProperty instrument, "Bought", "Date", ""
AddProperty instrument, "Manual", "FILE", "[FILE;R] What the maker says"
AddProperty instrument, "Images", "DIRECTORY", "[DIRECTORY;R] Where its pictures go"
AddProperty instrument, "Colour on charts", "COLOR", ""
AddProperty instrument, "Calibration", "BLOB", "Dark frame of the sensor, 8 by 2 pixels"

Set person = rep.MakeMetaNode("Person", "Somebody who observes")
AddProperty person, "Born", "Integer", "The year"
AddProperty person, "Nights", "Long", "How many nights they observed"
AddProperty person, "Signature", "FONT", "The font of their name on charts"
AddProperty person, "Remark", "NOTE", ""

Set target = rep.MakeMetaNode("Target", "Something in the sky")
AddProperty target, "Magnitude", "Single", "How bright it looks; smaller is brighter"
AddProperty target, "Distance", "Kilometres", ""
AddProperty target, "Moons", "Count", ""
AddProperty target, "Picture", "PICTURE", "[PICTURE;R] A drawing"
AddProperty target, "Catalogue", "String", "Its number in a catalogue"

Set observation = rep.MakeMetaNode("Observation", "A look at a target")
AddProperty observation, "Taken", "TIMESTAMP", ""
AddProperty observation, "Sky", "Sky condition", ""
AddProperty observation, "Result", "Variant", "A number, a text or a truth value, as the case may be"
AddProperty observation, "Notes", "NOTE", ""

Set made = rep.MakeMetaLink("Observation made by Person", observation, person, "", "made by")
Set seen = rep.MakeMetaLink("Observation shows Target", observation, target, "", "shows")
Set used = rep.MakeMetaLink("Observation uses Instrument", observation, instrument, "", "uses")
AddProperty used, "Exposure", "Double", "In seconds"
Set keeps = rep.MakeMetaLink("Person looks after Instrument", person, instrument, "", "looks after")
AddProperty keeps, "Since", "Date", ""

' Properties that only some instruments have.
For Each name In Array("Filter", "Cooling")
  Set extra = rep.MakeProperty(instrument, name, "String", "", "String")
  extra.IsDynamic = True
Next

Set refractor = AddNode(instrument, "Refractor", _
    Array("Aperture", 152.4, "Mounting", "equatorial", "In service", True, "Price", CCur(2890), _
    "Bought", DateSerial(2011, 5, 14), "Manual", "manuals\refractor.txt", _
    "Images", "images\refractor", "Colour on charts", CStr(RGB(0, 96, 192))))
Set reflector = AddNode(instrument, "Reflector", _
    Array("Aperture", 406.0, "Mounting", "altazimuth", "In service", True, "Price", CCur(4120.5), _
    "Bought", DateSerial(2017, 9, 2), "Colour on charts", CStr(RGB(192, 64, 0))))
Set camera = AddNode(instrument, "Camera", _
    Array("In service", False, "Price", CCur(799.99), "Bought", DateSerial(2020, 1, 31), _
    "Colour on charts", CStr(RGB(0, 128, 64)), _
    "Calibration", Array(3, 2, 4, 2, 3, 3, 255, 2, 2, 3, 2, 2, 4, 3, 2, 2)))
camera.SetProperty "Filter", "H-alpha"
camera.SetProperty "Cooling", "-15 °C"

Set ines = AddNode(person, "Inés Duarte", Array("Born", 1979, "Nights", 1204, _
    "Signature", "Georgia;10;True;False;False;False", _
    "Remark", "Keeps the key of the dome." & vbCrLf & "Prefers planets."))
Set jun = AddNode(person, "佐藤 純", Array("Born", 1995, "Nights", 311, _
    "Signature", "Arial;9;False;True;False;False", "Remark", ""))

Set moon = AddNode(target, "Moon", Array("Magnitude", CSng(-12.7), "Distance", "384400", "Moons", 0, _
    "Picture", "pictures\moon.bmp"))
Set saturn = AddNode(target, "Saturn", Array("Magnitude", CSng(0.5), "Distance", "1433530000", _
    "Moons", 146, "Picture", "pictures\saturn.bmp"))
Set galaxy = AddNode(target, "Andromeda Galaxy", Array("Magnitude", CSng(3.4), _
    "Distance", "9223372036854775807", "Picture", "pictures\galaxy.bmp", "Catalogue", "M 31"))

Observe "Rings of Saturn", "2026/02/11-21:40:00-0000", "clear", 26.7, ines, saturn, refractor, 0.04
Observe "Moon at first quarter", "2026/03/25-20:05:30-0500", "thin clouds", "much shimmer", _
    jun, moon, reflector, 0.002
Observe "Andromeda, attempt", "2026/09/14-23:10:00-0000", "cloudy", False, jun, galaxy, camera, 300
Observe "Andromeda", "2026/09/16-22:30:00-0000", "clear", 41, ines, galaxy, camera, 600

Keep ines, refractor, DateSerial(2012, 1, 1)
Keep jun, reflector, DateSerial(2019, 6, 1)
Keep jun, camera, DateSerial(2020, 2, 1)
rep.SaveAs WScript.Arguments(0)
rep.Close

' The type is a data type or an enumeration, by name.
Sub AddProperty(owner, name, typeName, about)
  rep.MakeProperty owner, name, rep.MetaTypes(typeName).DataType, about, typeName
End Sub

' A node with its values: Array(property, value, property, value, ...).
Function AddNode(metaNode, name, values)
  Dim i
  Set AddNode = rep.MakeNode(Identifier(name), metaNode.name, name)
  For i = 0 To UBound(values) Step 2
    AddNode.SetProperty values(i), values(i + 1)
  Next
End Function

Sub Observe(name, taken, sky, result, who, what, how, exposure)
  Dim node
  Set node = AddNode(observation, name, Array("Taken", taken, "Sky", sky, "Result", result))
  AddLink made, node, who
  AddLink seen, node, what
  AddLink(used, node, how).SetProperty "Exposure", exposure
End Sub

Sub Keep(who, what, since)
  AddLink(keeps, who, what).SetProperty "Since", since
End Sub

Function AddLink(metaLink, source, target)
  Dim label
  label = source.name & " " & metaLink.GetProperty("LinkName") & " " & target.name
  Set AddLink = rep.MakeLink(metaLink, source, target, Identifier(label), label)
End Function

Function Identifier(name)
  Identifier = LCase(Replace(name, " ", "-"))
End Function
