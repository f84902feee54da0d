<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>RelativeDate</name>
    <message>
        <location filename="../src/ui/RelativeDate.cpp" line="+35"/>
        <source>now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>sec.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>min.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>hr.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>yr.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>mo.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>wk.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>%n day(s)</source>
        <translation>
            <numerusform>%n Tag</numerusform>
            <numerusform>%n Tagen</numerusform>
        </translation>
    </message>
    <message>
        <location line="+2"/>
        <source>%1 ago</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>in %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SecretStore</name>
    <message>
        <location filename="../src/model/DesktopSecretStore.cpp" line="+46"/>
        <source>No secret store is running in this session, so passwords cannot be remembered.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../src/app/main.cpp" line="+93"/>
        <source>Repositories to add (if they are new); the last is selected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>[folder…]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::AboutSheet</name>
    <message>
        <location filename="../src/ui/AboutSheet.cpp" line="+18"/>
        <source>About Tillery</source>
        <translation>Über Tillery</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Version %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::ActivityRow</name>
    <message>
        <location filename="../src/ui/ActivityRow.cpp" line="+42"/>
        <location line="+1"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Stop this operation</source>
        <translation>Diesen Vorgang anhalten</translation>
    </message>
</context>
<context>
    <name>tillery::AlertButtons</name>
    <message>
        <location filename="../src/model/AppModel.cpp" line="+223"/>
        <source>Add Repository</source>
        <translation>Repository hinzufügen</translation>
    </message>
    <message>
        <location line="+36"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+89"/>
        <location filename="../src/model/BranchActions.cpp" line="+90"/>
        <location line="+182"/>
        <location filename="../src/model/ConflictActions.cpp" line="+74"/>
        <location filename="../src/model/LastCommitActions.cpp" line="+88"/>
        <location filename="../src/model/ShelfActions.cpp" line="+75"/>
        <location filename="../src/model/WorkingCopyActions.cpp" line="+109"/>
        <location line="+30"/>
        <location line="+31"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="-23"/>
        <location filename="../src/model/BranchActions.cpp" line="-203"/>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Remove Folder</source>
        <translation>Ordner entfernen</translation>
    </message>
    <message>
        <location filename="../src/model/BranchActions.cpp" line="+20"/>
        <location filename="../src/model/ShelfActions.cpp" line="-1"/>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <location line="+40"/>
        <location filename="../src/model/HistoryNavigation.cpp" line="+95"/>
        <location line="+56"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Merge</source>
        <translation>Mergen</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Squash and Merge</source>
        <translation>Zusammenfassen und mergen</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Rebase</source>
        <translation>Rebasen</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <location line="+91"/>
        <source>Create Repository</source>
        <translation>Repository erstellen</translation>
    </message>
    <message>
        <location filename="../src/model/ConflictActions.cpp" line="-1"/>
        <source>Abort %1</source>
        <translation>%1 abbrechen</translation>
    </message>
    <message>
        <location filename="../src/model/HistoryNavigation.cpp" line="-75"/>
        <source>Go</source>
        <translation>Los</translation>
    </message>
    <message>
        <location filename="../src/model/LastCommitActions.cpp" line="-1"/>
        <source>Undo Commit</source>
        <translation>Commit rückgängig machen</translation>
    </message>
    <message>
        <location filename="../src/model/WorkingCopyActions.cpp" line="-62"/>
        <location line="+30"/>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>Discard Changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
</context>
<context>
    <name>tillery::AnnotationCanvas</name>
    <message>
        <location filename="../src/ui/AnnotationCanvas.cpp" line="+24"/>
        <source>Annotated file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::AnnotationView</name>
    <message>
        <location filename="../src/ui/AnnotationView.cpp" line="+38"/>
        <location line="+3"/>
        <source>Show Diff</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-1"/>
        <source>Close the annotation and show the diff again (Esc)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Annotating…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+50"/>
        <source>at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>at the working copy’s parent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The file could not be annotated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Binary file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>A binary file has no lines to annotate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Not UTF-8 text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This file is not UTF-8 text, so its lines cannot be shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Empty file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This file has no lines.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::AppModel</name>
    <message>
        <location filename="../src/model/AppModel.cpp" line="-126"/>
        <source>Choose a Mercurial or Git Repository</source>
        <translation>Ein Mercurial- oder Git-Repository wählen</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Remove “%1” from Tillery?</source>
        <translation>„%1“ aus Tillery entfernen?</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The repository will only be removed from the app. Files on disk will not be changed.</source>
        <translation>Das Repository wird nur aus der App entfernt. Dateien auf der Festplatte bleiben unverändert.</translation>
    </message>
    <message>
        <location line="+69"/>
        <source>Rename Folder</source>
        <translation>Ordner umbenennen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Remove Folder “%1”?</source>
        <translation>Ordner „%1“ entfernen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Repositories in this folder will be moved to the main repository list. No files will be changed.</source>
        <translation>Die Repositorys in diesem Ordner kommen in die Hauptliste. Keine Dateien werden geändert.</translation>
    </message>
    <message>
        <location line="+117"/>
        <source>Opening repositories</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::AppearanceSettings</name>
    <message>
        <location filename="../src/ui/AppearanceSettings.cpp" line="+22"/>
        <source>Commit 2 Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Buttons</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Preview of the buttons</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Unified</source>
        <translation>Vereint</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Split</source>
        <translation>Geteilt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Diff layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Buttons:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The Commit button and the buttons of the start page follow this.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Diff layout:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::BranchActions</name>
    <message>
        <location filename="../src/model/BranchActions.cpp" line="-210"/>
        <source>Rename Branch</source>
        <translation>Branch umbenennen</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Delete Branch?</source>
        <translation>Branch löschen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The %1 “%2” will be deleted. Its %3 will remain in the repository.</source>
        <translation>%1 „%2“ wird gelöscht. Die %3 bleiben im Repository.</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>There are no other branches to choose from.</source>
        <translation>Es gibt keine anderen Branches zur Auswahl.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Choose a %1 %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Merge into Current Branch</source>
        <translation>In aktuellen Branch mergen</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Squash and Merge into Current Branch</source>
        <translation>Zusammenfassen und in aktuellen Branch mergen</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Rebase Current Branch</source>
        <translation>Aktuellen Branch rebasen</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Compare to Branch</source>
        <translation>Mit Branch vergleichen</translation>
    </message>
    <message>
        <location line="+83"/>
        <source>Create a Repository</source>
        <translation>Ein Repository erstellen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose the version control system for the new repository.</source>
        <translation>Wählen Sie die Versionsverwaltung für das neue Repository.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Choose a Folder for the New Repository</source>
        <translation>Einen Ordner für das neue Repository wählen</translation>
    </message>
</context>
<context>
    <name>tillery::ChangesView</name>
    <message>
        <location filename="../src/ui/ChangesView.cpp" line="+59"/>
        <source>Select a changed file to inspect its diff.</source>
        <translation>Wählen Sie eine geänderte Datei, um ihren Diff zu sehen.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Changed files</source>
        <translation>Geänderte Dateien</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+1"/>
        <source>Select all changed files</source>
        <translation>Alle geänderten Dateien auswählen</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Loading Changes…</source>
        <translation>Änderungen werden geladen…</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No Local Changes</source>
        <translation>Keine lokalen Änderungen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>The working copy is clean.</source>
        <translation>Die Arbeitskopie ist sauber.</translation>
    </message>
    <message>
        <location line="+111"/>
        <source>Discard Changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Discard %1 Selected Changes</source>
        <translation>%1 ausgewählte Änderungen verwerfen</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Use Mine</source>
        <translation>Meine verwenden</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Use Theirs</source>
        <translation>Ihre verwenden</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Mark as Resolved</source>
        <translation>Als gelöst markieren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Open in Merge Tool</source>
        <translation>Im Merge-Werkzeug öffnen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Mark as Unresolved</source>
        <translation>Als ungelöst markieren</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 Selected Files…</source>
        <translation>%1: ausgewählte Dateien…</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ignore File (Add to %1)</source>
        <translation>Datei ignorieren (zu %1 hinzufügen)</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Ignore Folder (Add to %1)</source>
        <translation>Ordner ignorieren (zu %1 hinzufügen)</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Ignore All %1 Files (Add to %2)</source>
        <translation>Alle %1-Dateien ignorieren (zu %2 hinzufügen)</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Copy File Path</source>
        <translation>Dateipfad kopieren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Copy Relative File Path</source>
        <translation>Relativen Dateipfad kopieren</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Reveal in Finder</source>
        <translation>Im Finder zeigen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Open with Default Program</source>
        <translation>Mit Standardprogramm öffnen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Annotate</source>
        <translation>Annotieren</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Show History of This File</source>
        <translation>Verlauf dieser Datei zeigen</translation>
    </message>
</context>
<context>
    <name>tillery::ChangesetHeader</name>
    <message>
        <location filename="../src/ui/ChangesetHeader.cpp" line="+43"/>
        <source>Changeset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <location line="+1"/>
        <source>Copy full hash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+1"/>
        <source>Copy hash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Branch</source>
        <translation>Branch</translation>
    </message>
</context>
<context>
    <name>tillery::ChangesetText</name>
    <message>
        <location filename="../src/ui/ChangesetText.cpp" line="+14"/>
        <source>Untitled %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>%1 at %2</source>
        <extracomment>A date followed by a time of day.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::CloneSheet</name>
    <message>
        <location filename="../src/ui/CloneSheet.cpp" line="+32"/>
        <source>Clone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+49"/>
        <source>Clone a Repository</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-48"/>
        <source>https://example.com/project or a local path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Into folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Folder name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Kind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Mercurial</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Git</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+3"/>
        <source>Choose Clone Destination</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Into folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Kind:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::CommandLogModel</name>
    <message>
        <location filename="../src/ui/CommandLogModel.cpp" line="+19"/>
        <source>%1 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+57"/>
        <source>Failed (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Crashed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Not started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Answered by a Mercurial command server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Repository</source>
        <translation>Repository</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::CommandLogWindow</name>
    <message>
        <location filename="../src/ui/CommandLogWindow.cpp" line="+28"/>
        <source>Command Log</source>
        <translation>Befehlsprotokoll</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Filter by command or repository</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Commands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <location line="+7"/>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::CommitBox</name>
    <message>
        <location filename="../src/ui/CommitBox.cpp" line="+22"/>
        <location line="+88"/>
        <source>Amend Last Commit</source>
        <translation>Letzten Commit ergänzen</translation>
    </message>
    <message>
        <location line="-84"/>
        <source>Summary (required)</source>
        <translation>Zusammenfassung (erforderlich)</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Summary</source>
        <translation>Zusammenfassung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Replace the last commit with one that also has these changes, under the message above.</source>
        <translation>Ersetzt den letzten Commit durch einen, der auch diese Änderungen enthält, mit der Nachricht oben.</translation>
    </message>
    <message numerus="yes">
        <location line="+75"/>
        <source>Commit %n File(s)</source>
        <translation>
            <numerusform>%n Datei committen</numerusform>
            <numerusform>%n Dateien committen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>Amend with %n File(s)</source>
        <translation>
            <numerusform>Mit %n Datei ergänzen</numerusform>
            <numerusform>Mit %n Dateien ergänzen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::CommitRowDelegate</name>
    <message>
        <location filename="../src/ui/CommitRowDelegate.cpp" line="+335"/>
        <source>This branch has not been pushed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::ConflictActions</name>
    <message>
        <location filename="../src/model/ConflictActions.cpp" line="-3"/>
        <source>Abort the %1?</source>
        <translation>%1 abbrechen?</translation>
    </message>
</context>
<context>
    <name>tillery::ConflictBanner</name>
    <message>
        <location filename="../src/ui/ConflictBanner.cpp" line="+18"/>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Abort…</source>
        <translation>Abbrechen…</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>no conflicts left: continue when ready</source>
        <translation>keine Konflikte mehr: fortsetzen, wenn bereit</translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>%n unresolved file(s)</source>
        <translation>
            <numerusform>%n ungelöste Datei</numerusform>
            <numerusform>%n ungelöste Dateien</numerusform>
        </translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1 in progress — %2</source>
        <translation>%1 läuft — %2</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Commit Merge</source>
        <translation>Merge committen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Continue %1</source>
        <translation>%1 fortsetzen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Abort %1…</source>
        <translation>%1 abbrechen…</translation>
    </message>
</context>
<context>
    <name>tillery::CreateBookmarkSheet</name>
    <message>
        <location filename="../src/ui/CreateBookmarkSheet.cpp" line="+21"/>
        <source>Create</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+21"/>
        <source>Create a Bookmark</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::CredentialDialog</name>
    <message>
        <location filename="../src/ui/CredentialDialog.cpp" line="+20"/>
        <source>Unknown Host</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Unknown Host %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sign In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sign In to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>User name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Remember in the secret store</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::Desktop</name>
    <message>
        <location filename="../src/model/PlatformDesktop.cpp" line="+45"/>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager zeigen</translation>
    </message>
</context>
<context>
    <name>tillery::DiffCanvas</name>
    <message>
        <location filename="../src/ui/DiffCanvas.cpp" line="+26"/>
        <source>Diff</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::DiffView</name>
    <message>
        <location filename="../src/ui/DiffView.cpp" line="+35"/>
        <source>Nothing Selected</source>
        <translation>Nichts ausgewählt</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+1"/>
        <source>Diff Settings</source>
        <translation>Diff-Einstellungen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Diff Display</source>
        <translation>Diff-Darstellung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Unified</source>
        <translation>Vereint</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Split</source>
        <translation>Geteilt</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Ignore Whitespace Changes</source>
        <translation>Leerraumänderungen ignorieren</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>Diff message</source>
        <translation>Diff-Meldung</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Loading Diff…</source>
        <translation>Diff wird geladen…</translation>
    </message>
    <message>
        <location line="+57"/>
        <source>Discard Selected Lines</source>
        <translation>Ausgewählte Zeilen verwerfen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Discard This Hunk</source>
        <translation>Diesen Abschnitt verwerfen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>tillery::GeneralSettings</name>
    <message>
        <location filename="../src/ui/GeneralSettings.cpp" line="+22"/>
        <source>Full Name &lt;address&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Commit author</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Commit author:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Git commits will use Git&apos;s own configuration until the name reads Full Name &lt;address&gt;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::HistoryNavigation</name>
    <message>
        <location filename="../src/model/HistoryNavigation.cpp" line="-7"/>
        <source>Go to %1</source>
        <translation type="unfinished">Gehe zu %1… {1?}</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Enter a hash or its start, a revision number, or a tag, bookmark or branch name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enter a hash or its start, or a tag or branch name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Nothing is named “%1”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No %1 has this hash, tag or name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+54"/>
        <source>This %1 is not in the history.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>It is not reachable from any branch, tag or head.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::HistoryView</name>
    <message>
        <location filename="../src/ui/HistoryView.cpp" line="+59"/>
        <source>No History</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+295"/>
        <source>No Matches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-294"/>
        <source>Searching…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Try Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Select a changeset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Changed files</source>
        <translation>Geänderte Dateien</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Search history</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Changed Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>No changed files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Loading Changes…</source>
        <translation>Änderungen werden geladen…</translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Annotate</source>
        <translation>Annotieren</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Show History of This File</source>
        <translation>Verlauf dieser Datei zeigen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Copy Relative File Path</source>
        <translation>Relativen Dateipfad kopieren</translation>
    </message>
    <message>
        <location line="+51"/>
        <source>Older %1 could not be loaded: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Loading older %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Search %1: words, author:, file:, hash</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>This repository has no %1 yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select a %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose a %1 to see its files and changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select a file changed by this %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Search Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>No %1 match this search.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::IconWell</name>
    <message>
        <location filename="../src/ui/IconWell.cpp" line="+27"/>
        <source>Drop a picture here, or click to choose one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Repository icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Choose an Icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Pictures (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::IntegrationsSettings</name>
    <message>
        <location filename="../src/ui/IntegrationsSettings.cpp" line="+38"/>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Editor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Editor application</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Application or program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Editor arguments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+8"/>
        <source>Choose an Editor or Executable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Application:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Arguments:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Editor:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Terminal:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::LastCommitActions</name>
    <message>
        <location filename="../src/model/LastCommitActions.cpp" line="-3"/>
        <source>Undo the last commit?</source>
        <translation>Letzten Commit rückgängig machen?</translation>
    </message>
</context>
<context>
    <name>tillery::MainWindow</name>
    <message>
        <location filename="../src/ui/MainWindow.cpp" line="+114"/>
        <source>About Tillery</source>
        <translation>Über Tillery</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Settings…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Quit Tillery</source>
        <translation>Tillery beenden</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>File</source>
        <translation>Ablage</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>New Repository…</source>
        <translation>Neues Repository…</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Add Local Repository…</source>
        <translation>Lokales Repository hinzufügen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Clone Repository…</source>
        <translation>Repository klonen…</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Repository</source>
        <translation>Repository</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Push</source>
        <translation>Push</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Pull</source>
        <translation>Pull</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Fetch</source>
        <translation>Fetch</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Remove Repository…</source>
        <translation>Repository entfernen…</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Open in Terminal</source>
        <translation>Im Terminal öffnen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Show in Finder</source>
        <translation>Im Finder zeigen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Open With…</source>
        <translation>Öffnen mit…</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open With</source>
        <translation>Öffnen mit</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Find in History</source>
        <translation>Im Verlauf suchen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Go to Changeset…</source>
        <translation>Gehe zu Changeset…</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Repository Settings…</source>
        <translation>Repository-Einstellungen…</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Branch</source>
        <translation>Branch</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>New Branch…</source>
        <translation>Neuer Branch…</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Rename…</source>
        <translation>Umbenennen…</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Delete…</source>
        <translation>Löschen…</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Discard All Changes…</source>
        <translation>Alle Änderungen verwerfen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Stash All Changes</source>
        <translation>Alle Änderungen zurücklegen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Undo Last Commit…</source>
        <translation>Letzten Commit rückgängig machen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Update from default</source>
        <translation>Von default aktualisieren</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Compare to Branch</source>
        <translation>Mit Branch vergleichen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Merge into Current Branch…</source>
        <translation>In aktuellen Branch mergen…</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Squash and Merge into Current Branch…</source>
        <translation>Zusammenfassen und in aktuellen Branch mergen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Rebase Current Branch…</source>
        <translation>Aktuellen Branch rebasen…</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>View</source>
        <translation>Darstellung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Command Log</source>
        <translation>Befehlsprotokoll</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Update from %1</source>
        <translation>Von %1 aktualisieren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Go to %1…</source>
        <translation>Gehe zu %1…</translation>
    </message>
</context>
<context>
    <name>tillery::RepositorySettingsSheet</name>
    <message>
        <location filename="../src/ui/RepositorySettingsSheet.cpp" line="+32"/>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Remove Icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+40"/>
        <source>Repository Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-38"/>
        <source>%1 remote address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Choose Image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+39"/>
        <source>Remote “%1”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Set the %1 `%2` %3 used by Pull and Push. HTTPS, SSH, and local paths are supported.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Choose a readable image file.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::RepositoryWatcher</name>
    <message>
        <location filename="../src/model/RepositoryWatcher.cpp" line="+55"/>
        <source>Live refresh is limited: the system allows no more folders to be watched, so changes in some folders show when you come back to Tillery.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::SettingsWindow</name>
    <message>
        <location filename="../src/ui/SettingsWindow.cpp" line="+23"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Appearance</source>
        <translation>Erscheinungsbild</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Integrations</source>
        <translation>Integrationen</translation>
    </message>
</context>
<context>
    <name>tillery::ShelfActions</name>
    <message>
        <location filename="../src/model/ShelfActions.cpp" line="-2"/>
        <source>Delete the %1 “%2”?</source>
        <translation>%1 „%2“ löschen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Its changes will be gone for good.</source>
        <translation>Seine Änderungen sind dann endgültig verloren.</translation>
    </message>
</context>
<context>
    <name>tillery::ShelvesView</name>
    <message>
        <location filename="../src/ui/ShelvesView.cpp" line="+87"/>
        <source>Shelves</source>
        <translation>Zurückgelegt</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+1"/>
        <location line="+114"/>
        <source>Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-113"/>
        <source>Restore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Restore and Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Delete…</source>
        <translation>Löschen…</translation>
    </message>
    <message>
        <location line="+88"/>
        <source>No %1</source>
        <translation>Keine %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Changes set aside with “%1 Selected Files” on the Changes page show here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Files (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>tillery::SidebarModel</name>
    <message>
        <location filename="../src/ui/SidebarModel.cpp" line="+119"/>
        <source>Repositories</source>
        <translation>Repositorys</translation>
    </message>
</context>
<context>
    <name>tillery::SidebarView</name>
    <message>
        <location filename="../src/ui/SidebarView.cpp" line="+43"/>
        <location line="+120"/>
        <source>Repositories</source>
        <translation>Repositorys</translation>
    </message>
    <message>
        <location line="-94"/>
        <location line="+1"/>
        <source>Add a repository</source>
        <translation>Ein Repository hinzufügen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Add Existing Repository…</source>
        <translation>Vorhandenes Repository hinzufügen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Create New Repository…</source>
        <translation>Neues Repository erstellen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Clone Repository…</source>
        <translation>Repository klonen…</translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+89"/>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
    <message>
        <location line="-88"/>
        <source>Sort Sidebar by Name</source>
        <translation>Seitenleiste nach Name sortieren</translation>
    </message>
    <message>
        <location line="+69"/>
        <source>Show in Finder</source>
        <translation>Im Finder zeigen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Open in Terminal</source>
        <translation>Im Terminal öffnen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Move to Folder</source>
        <translation>In Ordner verschieben</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Remove Repository…</source>
        <translation>Repository entfernen…</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Rename Folder…</source>
        <translation>Ordner umbenennen…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Remove Folder…</source>
        <translation>Ordner entfernen…</translation>
    </message>
</context>
<context>
    <name>tillery::WelcomeView</name>
    <message>
        <location filename="../src/ui/WelcomeView.cpp" line="+22"/>
        <source>Welcome to Tillery</source>
        <translation>Willkommen bei Tillery</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Manage repositories, review changes, and work with Mercurial or Git without leaving your desktop.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Add Local Repository…</source>
        <translation>Lokales Repository hinzufügen…</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Create Repository…</source>
        <translation>Repository erstellen…</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Clone Repository…</source>
        <translation>Repository klonen…</translation>
    </message>
</context>
<context>
    <name>tillery::WorkingCopyActions</name>
    <message>
        <location filename="../src/model/WorkingCopyActions.cpp" line="-144"/>
        <source>Tracked files will be restored to their last committed state. Untracked files will be moved to the Trash.</source>
        <translation>Versionierte Dateien werden auf ihren letzten committeten Stand zurückgesetzt. Unversionierte Dateien kommen in den Papierkorb.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The file will be restored to its last committed state.</source>
        <translation>Die Datei wird auf ihren letzten committeten Stand zurückgesetzt.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The files will be restored to their last committed state.</source>
        <translation>Die Dateien werden auf ihren letzten committeten Stand zurückgesetzt.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The untracked file will be moved to the Trash.</source>
        <translation>Die unversionierte Datei kommt in den Papierkorb.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The untracked files will be moved to the Trash.</source>
        <translation>Die unversionierten Dateien kommen in den Papierkorb.</translation>
    </message>
    <message>
        <location line="+62"/>
        <source>Discard this changed line?</source>
        <translation>Diese geänderte Zeile verwerfen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Discard these %1 changed lines?</source>
        <translation>Diese %1 geänderten Zeilen verwerfen?</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>They will be undone in “%1”. A copy of the file as it is now is kept in the folder “%2” of the repository&apos;s %3 folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Discard changes to “%1”?</source>
        <translation>Änderungen an „%1“ verwerfen?</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Discard changes to %1 selected files?</source>
        <translation>Änderungen an %1 ausgewählten Dateien verwerfen?</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>Discard All Changes?</source>
        <translation>Alle Änderungen verwerfen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>All tracked working-copy changes will be permanently reverted. Untracked files will be left untouched.</source>
        <translation>Alle Änderungen an versionierten Dateien werden endgültig zurückgenommen. Unversionierte Dateien bleiben unberührt.</translation>
    </message>
</context>
<context>
    <name>tillery::WorkspaceTabHeader</name>
    <message>
        <location filename="../src/ui/WorkspaceTabHeader.cpp" line="+94"/>
        <location line="+26"/>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <location line="-25"/>
        <location line="+3"/>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <location line="-2"/>
        <source>Shelves</source>
        <translation>Zurückgelegt</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Changes, %1</source>
        <translation>Änderungen, %1</translation>
    </message>
</context>
<context>
    <name>tillery::WorkspaceToolbar</name>
    <message>
        <location filename="../src/ui/WorkspaceToolbar.cpp" line="+38"/>
        <source>Fetch</source>
        <translation>Fetch</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Pull</source>
        <translation>Pull</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+95"/>
        <source>Push</source>
        <translation>Push</translation>
    </message>
    <message>
        <location line="-94"/>
        <source>Open in Terminal</source>
        <translation>Im Terminal öffnen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location line="+73"/>
        <source>Switching to %1</source>
        <translation>Wechsel zu %1</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>No %1</source>
        <translation>Keine %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>New %1…</source>
        <translation>Neu: %1…</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Switch branch</source>
        <translation>Branch wechseln</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Branch: %1</source>
        <translation>Branch: %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Publish this branch</source>
        <translation>Diesen Branch veröffentlichen</translation>
    </message>
</context>
</TS>
