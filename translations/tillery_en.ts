<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>RelativeDate</name>
    <message numerus="yes">
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n day</numerusform>
            <numerusform>%n days</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::CommitBox</name>
    <message numerus="yes">
        <source>Commit %n File(s)</source>
        <translation>
            <numerusform>Commit %n File</numerusform>
            <numerusform>Commit %n Files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Amend with %n File(s)</source>
        <translation>
            <numerusform>Amend with %n File</numerusform>
            <numerusform>Amend with %n Files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::ConflictBanner</name>
    <message numerus="yes">
        <source>%n unresolved file(s)</source>
        <translation>
            <numerusform>%n unresolved file</numerusform>
            <numerusform>%n unresolved files</numerusform>
        </translation>
    </message>
</context>
</TS>
