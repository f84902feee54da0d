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
    <name>tillery::ChangesView</name>
    <message numerus="yes">
        <source>Discard %n Selected Changes</source>
        <translation>
            <numerusform>Discard %n Selected Change</numerusform>
            <numerusform>Discard %n Selected Changes</numerusform>
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
<context>
    <name>tillery::MercurialShelfParsers</name>
    <message numerus="yes">
        <source>A shelf name can be at most %n bytes long in UTF-8.</source>
        <translation>
            <numerusform>A shelf name can be at most %n byte long in UTF-8.</numerusform>
            <numerusform>A shelf name can be at most %n bytes long in UTF-8.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::ShelfActions</name>
    <message numerus="yes">
        <source>The changes to the %n selected files are set aside under this name and leave the working copy.</source>
        <translation>
            <numerusform>The changes to the %n selected file are set aside under this name and leave the working copy.</numerusform>
            <numerusform>The changes to the %n selected files are set aside under this name and leave the working copy.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::ToolFailure</name>
    <message numerus="yes">
        <source>[… %1 bytes left out …]</source>
        <translation>
            <numerusform>[… %1 byte left out …]</numerusform>
            <numerusform>[… %1 bytes left out …]</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>[… %1 characters left out …]</source>
        <translation>
            <numerusform>[… %1 character left out …]</numerusform>
            <numerusform>[… %1 characters left out …]</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::WorkingCopyActions</name>
    <message numerus="yes">
        <source>Discard these %n changed lines?</source>
        <translation>
            <numerusform>Discard this %n changed line?</numerusform>
            <numerusform>Discard these %n changed lines?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Discard changes to %n selected files?</source>
        <translation>
            <numerusform>Discard changes to %n selected file?</numerusform>
            <numerusform>Discard changes to %n selected files?</numerusform>
        </translation>
    </message>
</context>
</TS>
