<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>RelativeDate</name>
    <message>
        <location filename="../src/ui/RelativeDate.cpp" line="+35"/>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>sec.</source>
        <translation>Sek.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>min.</source>
        <translation>Min.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>hr.</source>
        <translation>Std.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>yr.</source>
        <translation>J.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>mo.</source>
        <translation>Mon.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>wk.</source>
        <translation>Wo.</translation>
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
        <translation>vor %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>in %1</source>
        <translation>in %1</translation>
    </message>
</context>
<context>
    <name>SecretStore</name>
    <message>
        <location filename="../src/model/DesktopSecretStore.cpp" line="+46"/>
        <source>No secret store is running in this session, so passwords cannot be remembered.</source>
        <translation>In dieser Sitzung läuft kein Passwortspeicher, daher können Passwörter nicht gemerkt werden.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../src/app/main.cpp" line="+72"/>
        <source>A desktop client for Mercurial and Git repositories.</source>
        <translation>Ein Desktop-Client für Mercurial- und Git-Repositorys.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Render the main window to a PNG file and quit.</source>
        <translation>Das Hauptfenster in eine PNG-Datei zeichnen und beenden.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Select (and add) this repository.</source>
        <translation>Dieses Repository auswählen (und hinzufügen).</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Show this page: changes or history.</source>
        <translation>Diese Seite zeigen: changes oder history.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Select this changed file (a repository-relative path).</source>
        <translation>Diese geänderte Datei auswählen (ein Pfad relativ zum Repository).</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Open two sample repositories made in a temporary folder, with settings of their own; your own list of repositories is left alone.</source>
        <translation>Zwei Beispiel-Repositorys in einem temporären Ordner öffnen, mit eigenen Einstellungen; Ihre eigene Liste der Repositorys bleibt unberührt.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Print a line on standard output once the window is on screen.</source>
        <translation>Eine Zeile auf die Standardausgabe schreiben, sobald das Fenster zu sehen ist.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Use a dark palette.</source>
        <translation>Eine dunkle Farbpalette verwenden.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>With --demo: write pictures of every page, sheet and settings tab, light and dark, into the folder and quit.</source>
        <translation>Mit --demo: Bilder jeder Seite, jedes Dialogs und jedes Einstellungsreiters, hell und dunkel, in den Ordner schreiben und beenden.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Repositories to add (if they are new); the last is selected.</source>
        <translation>Hinzuzufügende Repositorys (falls neu); das letzte wird ausgewählt.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>[folder…]</source>
        <translation>[Ordner…]</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Tillery could not open %1: there is no such folder.</source>
        <translation>Tillery konnte %1 nicht öffnen: Diesen Ordner gibt es nicht.</translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Tillery could not open %1: %2</source>
        <translation>Tillery konnte %1 nicht öffnen: %2</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Tillery could not write a screenshot.</source>
        <translation>Tillery konnte kein Bildschirmfoto schreiben.</translation>
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
        <translation>Version %1</translation>
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
        <location filename="../src/model/AppModel.cpp" line="+224"/>
        <source>Add Repository</source>
        <translation>Repository hinzufügen</translation>
    </message>
    <message>
        <location line="+33"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+86"/>
        <location filename="../src/model/BranchActions.cpp" line="+90"/>
        <location line="+175"/>
        <location filename="../src/model/ConflictActions.cpp" line="+75"/>
        <location filename="../src/model/LastCommitActions.cpp" line="+91"/>
        <location filename="../src/model/ShelfActions.cpp" line="+75"/>
        <location filename="../src/model/WorkingCopyActions.cpp" line="+105"/>
        <location line="+27"/>
        <location line="+29"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="-21"/>
        <location filename="../src/model/BranchActions.cpp" line="-196"/>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <location line="+20"/>
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
        <location line="+39"/>
        <location filename="../src/model/HistoryNavigation.cpp" line="+91"/>
        <location line="+55"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Merge</source>
        <translation>Mergen</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Squash and Merge</source>
        <translation>Zusammenfassen und mergen</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Rebase</source>
        <translation>Rebasen</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <location line="+90"/>
        <source>Create Repository</source>
        <translation>Repository erstellen</translation>
    </message>
    <message>
        <location filename="../src/model/ConflictActions.cpp" line="-2"/>
        <source>Abort %1</source>
        <translation>%1 abbrechen</translation>
    </message>
    <message>
        <location filename="../src/model/HistoryNavigation.cpp" line="-73"/>
        <source>Go</source>
        <translation>Los</translation>
    </message>
    <message>
        <location filename="../src/model/LastCommitActions.cpp" line="-1"/>
        <source>Undo Commit</source>
        <translation>Commit rückgängig machen</translation>
    </message>
    <message>
        <location filename="../src/model/WorkingCopyActions.cpp" line="-57"/>
        <location line="+27"/>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Discard Changes</source>
        <translation>Änderungen verwerfen</translation>
    </message>
</context>
<context>
    <name>tillery::AnnotationCanvas</name>
    <message>
        <location filename="../src/ui/AnnotationCanvas.cpp" line="+24"/>
        <source>Annotated file</source>
        <translation>Annotierte Datei</translation>
    </message>
</context>
<context>
    <name>tillery::AnnotationView</name>
    <message>
        <location filename="../src/ui/AnnotationView.cpp" line="+38"/>
        <location line="+3"/>
        <source>Show Diff</source>
        <translation>Diff zeigen</translation>
    </message>
    <message>
        <location line="-1"/>
        <source>Close the annotation and show the diff again (Esc)</source>
        <translation>Annotation schließen und wieder den Diff zeigen (Esc)</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Annotating…</source>
        <translation>Wird annotiert…</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>at %1</source>
        <translation>bei %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>at the working copy’s parent</source>
        <translation>beim Elternteil der Arbeitskopie</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The file could not be annotated</source>
        <translation>Die Datei konnte nicht annotiert werden</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Binary file</source>
        <translation>Binärdatei</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>A binary file has no lines to annotate.</source>
        <translation>Eine Binärdatei hat keine Zeilen zum Annotieren.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Not UTF-8 text</source>
        <translation>Kein UTF-8-Text</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This file is not UTF-8 text, so its lines cannot be shown.</source>
        <translation>Diese Datei ist kein UTF-8-Text, daher können ihre Zeilen nicht gezeigt werden.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Empty file</source>
        <translation>Leere Datei</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This file has no lines.</source>
        <translation>Diese Datei hat keine Zeilen.</translation>
    </message>
</context>
<context>
    <name>tillery::AppModel</name>
    <message>
        <location filename="../src/model/AppModel.cpp" line="-157"/>
        <source>Refreshing %1</source>
        <translation>%1 wird aktualisiert</translation>
    </message>
    <message>
        <location line="+27"/>
        <source>Working Files Put Back</source>
        <translation>Arbeitsdateien wiederhergestellt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>A commit of chosen lines was cut short before it could put the working files back. Tillery has now put them back as they were: %1.</source>
        <translation>Ein Commit ausgewählter Zeilen wurde abgebrochen, bevor er die Arbeitsdateien wiederherstellen konnte. Tillery hat sie jetzt so wiederhergestellt, wie sie waren: %1.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Choose a Mercurial or Git Repository</source>
        <translation>Ein Mercurial- oder Git-Repository wählen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Adding repository</source>
        <translation>Repository wird hinzugefügt</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Remove “%1” from Tillery?</source>
        <translation>„%1“ aus Tillery entfernen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The repository will only be removed from the app. Files on disk will not be changed.</source>
        <translation>Das Repository wird nur aus der App entfernt. Dateien auf der Festplatte bleiben unverändert.</translation>
    </message>
    <message>
        <location line="+67"/>
        <source>Rename Folder</source>
        <translation>Ordner umbenennen</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Remove Folder “%1”?</source>
        <translation>Ordner „%1“ entfernen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Repositories in this folder will be moved to the main repository list. No files will be changed.</source>
        <translation>Die Repositorys in diesem Ordner kommen in die Hauptliste. Keine Dateien werden geändert.</translation>
    </message>
    <message>
        <location line="+115"/>
        <source>Opening repositories</source>
        <translation>Repositorys werden geöffnet</translation>
    </message>
</context>
<context>
    <name>tillery::AppearanceSettings</name>
    <message>
        <location filename="../src/ui/AppearanceSettings.cpp" line="+22"/>
        <source>Commit 2 Files</source>
        <translation>2 Dateien committen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Buttons</source>
        <translation>Schaltflächen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Preview of the buttons</source>
        <translation>Vorschau der Schaltflächen</translation>
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
        <translation>Diff-Darstellung</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Buttons:</source>
        <translation>Schaltflächen:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The Commit button and the buttons of the start page follow this.</source>
        <translation>Die Commit-Schaltfläche und die Schaltflächen der Startseite folgen dieser Einstellung.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Diff layout:</source>
        <translation>Diff-Darstellung:</translation>
    </message>
</context>
<context>
    <name>tillery::Background</name>
    <message>
        <location filename="../src/model/Background.cpp" line="+43"/>
        <source>An unknown error occurred.</source>
        <translation>Ein unbekannter Fehler ist aufgetreten.</translation>
    </message>
</context>
<context>
    <name>tillery::BranchActions</name>
    <message>
        <location filename="../src/model/BranchActions.cpp" line="-203"/>
        <source>Rename Branch</source>
        <translation>Branch umbenennen</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Delete Branch?</source>
        <translation>Branch löschen?</translation>
    </message>
    <message>
        <location line="+43"/>
        <source>There are no other branches to choose from.</source>
        <translation>Es gibt keine anderen Branches zur Auswahl.</translation>
    </message>
    <message>
        <location line="-69"/>
        <source>Creating branch</source>
        <translation>Branch wird erstellt</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Renaming branch</source>
        <translation>Branch wird umbenannt</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>The bookmark “%1” will be deleted. Its changesets will remain in the repository.</source>
        <translation>Das Lesezeichen „%1“ wird gelöscht. Seine Changesets bleiben im Repository.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The branch “%1” will be deleted. Its commits will remain in the repository.</source>
        <translation>Der Branch „%1“ wird gelöscht. Seine Commits bleiben im Repository.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Deleting branch</source>
        <translation>Branch wird gelöscht</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Updating from %1</source>
        <translation>Aktualisierung von %1</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Choose a Mercurial bookmark.</source>
        <translation>Wählen Sie ein Mercurial-Lesezeichen.</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Choose a Git branch.</source>
        <translation>Wählen Sie einen Git-Branch.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Merge into Current Branch</source>
        <translation>In aktuellen Branch mergen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Merging %1</source>
        <translation>%1 wird gemergt</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Squash and Merge into Current Branch</source>
        <translation>Zusammenfassen und in aktuellen Branch mergen</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Squash merging %1</source>
        <translation>%1 wird zusammengefasst und gemergt</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Rebase Current Branch</source>
        <translation>Aktuellen Branch rebasen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Rebasing %1 onto %2</source>
        <translation>Rebase von %1 auf %2</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Compare to Branch</source>
        <translation>Mit Branch vergleichen</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Changes on %1 since %2</source>
        <translation>Änderungen auf %1 seit %2</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Comparing to %1</source>
        <translation>Vergleich mit %1</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>There are no differences from %1.</source>
        <translation>Es gibt keine Unterschiede zu %1.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Pulling and updating</source>
        <translation>Pull und Aktualisierung</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Fetching %1</source>
        <translation>%1 werden abgerufen</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Pushing %1</source>
        <translation>%1 werden gepusht</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Saving remote path</source>
        <translation>Remote-Pfad wird gespeichert</translation>
    </message>
    <message>
        <location line="+12"/>
        <location line="+4"/>
        <source>Cloning repository</source>
        <translation>Repository wird geklont</translation>
    </message>
    <message>
        <location line="-4"/>
        <source>Choose a folder to clone into.</source>
        <translation>Wählen Sie einen Ordner, in den geklont werden soll.</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Create a Repository</source>
        <translation>Ein Repository erstellen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose the version control system for the new repository.</source>
        <translation>Wählen Sie die Versionsverwaltung für das neue Repository.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Choose a Folder for the New Repository</source>
        <translation>Einen Ordner für das neue Repository wählen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Creating repository</source>
        <translation>Repository wird erstellt</translation>
    </message>
</context>
<context>
    <name>tillery::BranchNames</name>
    <message>
        <location filename="../src/model/BranchNames.cpp" line="+25"/>
        <source>Enter a name.</source>
        <translation>Geben Sie einen Namen ein.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A name cannot begin or end with a space.</source>
        <translation>Ein Name darf nicht mit einem Leerzeichen beginnen oder enden.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A name cannot begin with “-”.</source>
        <translation>Ein Name darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A name cannot contain line breaks or other control characters.</source>
        <translation>Ein Name darf keine Zeilenumbrüche oder andere Steuerzeichen enthalten.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>A %1 named “%2” already exists.</source>
        <translation>Ein %1 namens „%2“ existiert bereits.</translation>
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
    <message numerus="yes">
        <location line="+0"/>
        <source>Discard %n Selected Changes</source>
        <translation>
            <numerusform>%n ausgewählte Änderung verwerfen</numerusform>
            <numerusform>%n ausgewählte Änderungen verwerfen</numerusform>
        </translation>
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
        <source>Shelve Selected Files…</source>
        <translation>Ausgewählte Dateien zurückstellen…</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Stash Selected Files…</source>
        <translation>Ausgewählte Dateien in den Stash legen…</translation>
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
        <translation>Changeset</translation>
    </message>
    <message>
        <location line="+17"/>
        <location line="+1"/>
        <source>Copy full hash</source>
        <translation>Vollständigen Hash kopieren</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+1"/>
        <source>Copy hash</source>
        <translation>Hash kopieren</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Author</source>
        <translation>Autor</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Date</source>
        <translation>Datum</translation>
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
        <translation>%1 ohne Titel</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>%1 at %2</source>
        <extracomment>A date followed by a time of day.</extracomment>
        <translation>%1 um %2</translation>
    </message>
</context>
<context>
    <name>tillery::ChosenChangeSteps</name>
    <message>
        <location filename="../src/process/ChosenChangeSteps.cpp" line="+30"/>
        <source>“%1” changed after its differences were shown. Look at them again and choose the lines anew.</source>
        <translation>„%1“ hat sich geändert, nachdem seine Unterschiede gezeigt wurden. Sehen Sie sie sich erneut an und wählen Sie die Zeilen neu.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Only the whole of “%1” can be committed or discarded: it is not UTF-8 text.</source>
        <translation>„%1“ kann nur als Ganzes committet oder verworfen werden: Die Datei ist kein UTF-8-Text.</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>Only the whole of “%1” can be committed or discarded: its differences are not lines of text.</source>
        <translation>„%1“ kann nur als Ganzes committet oder verworfen werden: Ihre Unterschiede sind keine Textzeilen.</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Only the whole of “%1” can be committed or discarded: it is removed.</source>
        <translation>„%1“ kann nur als Ganzes committet oder verworfen werden: Die Datei ist entfernt.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Only the whole of “%1” can be committed or discarded: it is a link.</source>
        <translation>„%1“ kann nur als Ganzes committet oder verworfen werden: Die Datei ist ein Link.</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Some of the files changed after their differences were shown. Look at them again and choose the lines anew.</source>
        <translation>Einige Dateien haben sich geändert, nachdem ihre Unterschiede gezeigt wurden. Sehen Sie sie sich erneut an und wählen Sie die Zeilen neu.</translation>
    </message>
</context>
<context>
    <name>tillery::CloneRequest</name>
    <message>
        <location filename="../src/model/CloneRequest.cpp" line="+67"/>
        <source>Enter the address of the repository to clone.</source>
        <translation>Geben Sie die Adresse des zu klonenden Repositorys ein.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The address cannot begin with “-” or hold a line break.</source>
        <translation>Die Adresse darf nicht mit „-“ beginnen oder einen Zeilenumbruch enthalten.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Choose an existing folder to clone into.</source>
        <translation>Wählen Sie einen vorhandenen Ordner, in den geklont werden soll.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enter a name for the new folder.</source>
        <translation>Geben Sie einen Namen für den neuen Ordner ein.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The folder name cannot contain “/” or be “.” or “..”.</source>
        <translation>Der Ordnername darf kein „/“ enthalten und nicht „.“ oder „..“ sein.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>“%1” already exists in that folder.</source>
        <translation>„%1“ existiert in diesem Ordner bereits.</translation>
    </message>
</context>
<context>
    <name>tillery::CloneSheet</name>
    <message>
        <location filename="../src/ui/CloneSheet.cpp" line="+32"/>
        <source>Clone</source>
        <translation>Klonen</translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+49"/>
        <source>Clone a Repository</source>
        <translation>Ein Repository klonen</translation>
    </message>
    <message>
        <location line="-48"/>
        <source>https://example.com/project or a local path</source>
        <translation>https://example.com/project oder ein lokaler Pfad</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Into folder</source>
        <translation>In Ordner</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Folder name</source>
        <translation>Ordnername</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Mercurial</source>
        <translation>Mercurial</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Git</source>
        <translation>Git</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+3"/>
        <source>Choose Clone Destination</source>
        <translation>Ziel des Klons wählen</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Into folder:</source>
        <translation>In Ordner:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Kind:</source>
        <translation>Art:</translation>
    </message>
</context>
<context>
    <name>tillery::CommandLogModel</name>
    <message>
        <location filename="../src/ui/CommandLogModel.cpp" line="+19"/>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <location line="+57"/>
        <source>Failed (%1)</source>
        <translation>Fehlgeschlagen (%1)</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Crashed</source>
        <translation>Abgestürzt</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Not started</source>
        <translation>Nicht gestartet</translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Answered by a Mercurial command server</source>
        <translation>Von einem Mercurial-Befehlsserver beantwortet</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Repository</source>
        <translation>Repository</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Status</source>
        <translation>Status</translation>
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
        <translation>Nach Befehl oder Repository filtern</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Commands</source>
        <translation>Befehle</translation>
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
        <translation>Leeren</translation>
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
        <translation>Dieser Branch wurde noch nicht gepusht</translation>
    </message>
</context>
<context>
    <name>tillery::ConflictActions</name>
    <message>
        <location filename="../src/model/ConflictActions.cpp" line="-24"/>
        <source>Continuing %1</source>
        <translation>%1 wird fortgesetzt</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Abort the %1?</source>
        <translation>%1 abbrechen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The working copy goes back to how it was before the %1; what was resolved so far is lost.</source>
        <translation>Die Arbeitskopie kehrt zum Stand vor Beginn des Vorgangs „%1“ zurück; was bisher gelöst wurde, geht verloren.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Aborting %1</source>
        <translation>%1 wird abgebrochen</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Using mine</source>
        <translation>Meine Version wird verwendet</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Using theirs</source>
        <translation>Ihre Version wird verwendet</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Marking as resolved</source>
        <translation>Wird als gelöst markiert</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Marking as unresolved</source>
        <translation>Wird als ungelöst markiert</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Merging “%1” in the merge tool</source>
        <translation>„%1“ wird im Merge-Werkzeug gemergt</translation>
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
        <translation>Erstellen</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 name</source>
        <translation>%1-Name</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+21"/>
        <source>Create a Bookmark</source>
        <translation>Ein Lesezeichen erstellen</translation>
    </message>
</context>
<context>
    <name>tillery::CredentialDialog</name>
    <message>
        <location filename="../src/ui/CredentialDialog.cpp" line="+20"/>
        <source>Unknown Host</source>
        <translation>Unbekannter Host</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Unknown Host %1</source>
        <translation>Unbekannter Host %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sign In</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sign In to %1</source>
        <translation>Bei %1 anmelden</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>User name</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Remember in the secret store</source>
        <translation>Im Passwortspeicher merken</translation>
    </message>
</context>
<context>
    <name>tillery::Desktop</name>
    <message>
        <location filename="../src/model/PlatformDesktop.cpp" line="+31"/>
        <source>%1 could not be moved to the Trash, so it was left where it was: %2</source>
        <translation>%1 konnte nicht in den Papierkorb verschoben werden und blieb daher, wo es war: %2</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Show in File Manager</source>
        <translation>Im Dateimanager zeigen</translation>
    </message>
</context>
<context>
    <name>tillery::DiffCanvas</name>
    <message>
        <location filename="../src/ui/DiffCanvas.cpp" line="+26"/>
        <source>Diff</source>
        <translation>Diff</translation>
    </message>
</context>
<context>
    <name>tillery::DiffSelection</name>
    <message>
        <location filename="../src/model/DiffSelection.cpp" line="+26"/>
        <source>Deleted</source>
        <translation>Gelöscht</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>No textual diff is available for this file with white space changes ignored.</source>
        <translation>Für diese Datei gibt es keinen Text-Diff, wenn Leerraumänderungen ignoriert werden.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>No textual diff is available for this file.</source>
        <translation>Für diese Datei gibt es keinen Text-Diff.</translation>
    </message>
    <message>
        <location line="+134"/>
        <source>Loading icon preview</source>
        <translation>Vorschau wird geladen</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>This image file could not be previewed.</source>
        <translation>Für diese Bilddatei konnte keine Vorschau erstellt werden.</translation>
    </message>
    <message>
        <location line="+48"/>
        <source>Loading diff</source>
        <translation>Diff wird geladen</translation>
    </message>
    <message>
        <location line="+46"/>
        <source>Loading changeset files</source>
        <translation>Dateien des Changesets werden geladen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Loading commit files</source>
        <translation>Dateien des Commits werden geladen</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>This changeset has no changed files.</source>
        <translation>Dieses Changeset hat keine geänderten Dateien.</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>This commit has no changed files.</source>
        <translation>Dieser Commit hat keine geänderten Dateien.</translation>
    </message>
    <message>
        <location line="+44"/>
        <location line="+18"/>
        <source>Loading file diff</source>
        <translation>Diff der Datei wird geladen</translation>
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
    <name>tillery::EditorArguments</name>
    <message>
        <location filename="../src/integrations/EditorArguments.cpp" line="+13"/>
        <source>The arguments contain an unterminated quote.</source>
        <translation>Die Argumente enthalten ein nicht geschlossenes Anführungszeichen.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The arguments end with an incomplete escape.</source>
        <translation>Die Argumente enden mit einer unvollständigen Escape-Sequenz.</translation>
    </message>
    <message>
        <location line="+59"/>
        <source>Arguments must include %TARGET_PATH%.</source>
        <translation>Die Argumente müssen %TARGET_PATH% enthalten.</translation>
    </message>
</context>
<context>
    <name>tillery::EditorLaunch</name>
    <message>
        <location filename="../src/integrations/EditorLaunch.cpp" line="+93"/>
        <source>%1 is no longer installed. Choose another editor in Settings.</source>
        <translation>%1 ist nicht mehr installiert. Wählen Sie in den Einstellungen einen anderen Editor.</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Choose a valid editor path in Settings &gt; Integrations.</source>
        <translation>Wählen Sie unter Einstellungen &gt; Integrationen einen gültigen Editor-Pfad.</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>The selected path is not an executable or macOS application.</source>
        <translation>Der gewählte Pfad ist weder ein ausführbares Programm noch eine macOS-App.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>The selected path is not an executable program.</source>
        <translation>Der gewählte Pfad ist kein ausführbares Programm.</translation>
    </message>
</context>
<context>
    <name>tillery::ExternalEditor</name>
    <message>
        <location filename="../src/integrations/ExternalEditor.cpp" line="+90"/>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
</context>
<context>
    <name>tillery::Failure</name>
    <message>
        <location filename="../src/process/Failure.cpp" line="+14"/>
        <source>The operation was cancelled.</source>
        <translation>Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The file could not be saved.</source>
        <translation>Die Datei konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The folder %1 could not be created.</source>
        <translation>Der Ordner %1 konnte nicht erstellt werden.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>A temporary folder could not be made: %1</source>
        <translation>Ein temporärer Ordner konnte nicht angelegt werden: %1</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>%1 could not be read: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>%1 could not be started: %2</source>
        <translation>%1 konnte nicht gestartet werden: %2</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The data could not be read because it is not in the correct format (%1 at offset %2).</source>
        <translation>Die Daten konnten nicht gelesen werden, weil sie nicht das richtige Format haben (%1 bei Position %2).</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>%1 is not a Mercurial or Git repository.</source>
        <translation>%1 ist kein Mercurial- oder Git-Repository.</translation>
    </message>
</context>
<context>
    <name>tillery::FileState</name>
    <message>
        <location filename="../src/records/FileState.cpp" line="+19"/>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Added</source>
        <translation>Hinzugefügt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Removed</source>
        <translation>Entfernt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Missing</source>
        <translation>Fehlt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Untracked</source>
        <translation>Unversioniert</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Ignored</source>
        <translation>Ignoriert</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Clean</source>
        <translation>Unverändert</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Unresolved</source>
        <translation>Ungelöst</translation>
    </message>
</context>
<context>
    <name>tillery::GeneralSettings</name>
    <message>
        <location filename="../src/ui/GeneralSettings.cpp" line="+22"/>
        <source>Full Name &lt;address&gt;</source>
        <translation>Vollständiger Name &lt;Adresse&gt;</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Commit author</source>
        <translation>Commit-Autor</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Commit author:</source>
        <translation>Commit-Autor:</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Git commits will use Git&apos;s own configuration until the name reads Full Name &lt;address&gt;.</source>
        <translation>Git-Commits verwenden die eigene Konfiguration von Git, bis der Name die Form Vollständiger Name &lt;Adresse&gt; hat.</translation>
    </message>
</context>
<context>
    <name>tillery::GitBackend</name>
    <message>
        <location filename="../src/git/GitBackend.cpp" line="+97"/>
        <source>A branch name cannot contain spaces or any of ~ ^ : ? * [ \.</source>
        <translation>Ein Branch-Name darf keine Leerzeichen und keines der Zeichen ~ ^ : ? * [ \ enthalten.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A branch name cannot contain “..”.</source>
        <translation>Ein Branch-Name darf kein „..“ enthalten.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A branch name cannot be “@” or contain “@{”.</source>
        <translation>Ein Branch-Name darf nicht „@“ sein oder „@{“ enthalten.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A branch name cannot begin or end with “/” or hold “//”.</source>
        <translation>Ein Branch-Name darf nicht mit „/“ beginnen oder enden und kein „//“ enthalten.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A branch name cannot end with “.” or “.lock”.</source>
        <translation>Ein Branch-Name darf nicht auf „.“ oder „.lock“ enden.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>No part of a branch name can begin with “.”.</source>
        <translation>Kein Teil eines Branch-Namens darf mit „.“ beginnen.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>“HEAD” is a name Git keeps for itself.</source>
        <translation>„HEAD“ ist ein Name, den Git für sich selbst reserviert.</translation>
    </message>
    <message>
        <location line="+110"/>
        <source>There is no commit yet.</source>
        <translation>Es gibt noch keinen Commit.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The last commit is already on “%1”, where others may have it; it can no longer be changed.</source>
        <translation>Der letzte Commit ist bereits auf „%1“, wo andere ihn haben können; er kann nicht mehr geändert werden.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>The first commit cannot be undone.</source>
        <translation>Der erste Commit kann nicht rückgängig gemacht werden.</translation>
    </message>
</context>
<context>
    <name>tillery::GitConflicts</name>
    <message>
        <location filename="../src/git/GitConflicts.cpp" line="+65"/>
        <source>“%1” has no conflict that Git still knows of.</source>
        <translation>„%1“ hat keinen Konflikt, den Git noch kennt.</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Some files still have conflicts; resolve them first.</source>
        <translation>Einige Dateien haben noch Konflikte; lösen Sie diese zuerst.</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Tillery cannot tell which stash was being restored; the working copy was left as it is.</source>
        <translation>Tillery kann nicht erkennen, welcher Stash wiederhergestellt wurde; die Arbeitskopie bleibt, wie sie ist.</translation>
    </message>
    <message>
        <location line="+52"/>
        <source>Files the stash changed were changed again since it was restored; the restore was not undone.</source>
        <translation>Dateien, die der Stash geändert hat, wurden seit der Wiederherstellung erneut geändert; die Wiederherstellung wurde nicht rückgängig gemacht.</translation>
    </message>
    <message>
        <location line="+122"/>
        <source>This repository&apos;s own configuration sets a merge tool (%1); Tillery runs only one that you set in your own Git configuration.</source>
        <translation>Die eigene Konfiguration dieses Repositorys legt ein Merge-Werkzeug fest (%1); Tillery startet nur eines, das Sie in Ihrer eigenen Git-Konfiguration festlegen.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>No merge tool is set in your Git configuration (merge.tool).</source>
        <translation>In Ihrer Git-Konfiguration ist kein Merge-Werkzeug festgelegt (merge.tool).</translation>
    </message>
</context>
<context>
    <name>tillery::GitShelves</name>
    <message>
        <location filename="../src/git/GitShelves.cpp" line="+30"/>
        <source>“%1” is not the id of a stash entry.</source>
        <translation>„%1“ ist nicht die ID eines Stash-Eintrags.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>The stash “%1” no longer exists.</source>
        <translation>Der Stash „%1“ existiert nicht mehr.</translation>
    </message>
    <message>
        <location line="+66"/>
        <source>Resolve the conflicts in the working copy before restoring a stash.</source>
        <translation>Lösen Sie die Konflikte in der Arbeitskopie, bevor Sie einen Stash wiederherstellen.</translation>
    </message>
</context>
<context>
    <name>tillery::HistoryNavigation</name>
    <message>
        <location filename="../src/model/HistoryNavigation.cpp" line="-4"/>
        <source>Go to %1</source>
        <translation>Gehe zu %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Enter a hash or its start, a revision number, or a tag, bookmark or branch name.</source>
        <translation>Geben Sie einen Hash oder seinen Anfang, eine Revisionsnummer oder den Namen eines Tags, Lesezeichens oder Branches ein.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Enter a hash or its start, or a tag or branch name.</source>
        <translation>Geben Sie einen Hash oder seinen Anfang oder den Namen eines Tags oder Branches ein.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Looking for %1</source>
        <translation>Suche nach %1</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Nothing is named “%1”.</source>
        <translation>Nichts heißt „%1“.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No %1 has this hash, tag or name.</source>
        <translation>Kein %1 hat diesen Hash, Tag oder Namen.</translation>
    </message>
    <message>
        <location line="+53"/>
        <source>This changeset is not in the history.</source>
        <translation>Dieses Changeset ist nicht im Verlauf.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>This commit is not in the history.</source>
        <translation>Dieser Commit ist nicht im Verlauf.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>It is not reachable from any branch, tag or head.</source>
        <translation>Kein Branch, Tag oder Head führt dorthin.</translation>
    </message>
</context>
<context>
    <name>tillery::HistoryView</name>
    <message>
        <location filename="../src/ui/HistoryView.cpp" line="+59"/>
        <source>No History</source>
        <translation>Kein Verlauf</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+295"/>
        <source>No Matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <location line="-294"/>
        <source>Searching…</source>
        <translation>Suche läuft…</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Select a changeset</source>
        <translation>Changeset auswählen</translation>
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
        <translation>Verlauf durchsuchen</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Changed Files</source>
        <translation>Geänderte Dateien</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>No changed files</source>
        <translation>Keine geänderten Dateien</translation>
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
        <translation>Ältere %1 konnten nicht geladen werden: %2</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Loading older %1…</source>
        <translation>Ältere %1 werden geladen…</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Search %1: words, author:, file:, hash</source>
        <translation>%1 durchsuchen: Wörter, author:, file:, Hash</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>This repository has no %1 yet.</source>
        <translation>Dieses Repository hat noch keine %1.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select a %1</source>
        <translation>%1 auswählen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose a %1 to see its files and changes.</source>
        <translation>%1 auswählen, um seine Dateien und Änderungen zu sehen.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select a file changed by this %1.</source>
        <translation>Eine in diesem %1 geänderte Datei auswählen.</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Search Failed</source>
        <translation>Suche fehlgeschlagen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>No %1 match this search.</source>
        <translation>Keine %1 passen zu dieser Suche.</translation>
    </message>
</context>
<context>
    <name>tillery::IconWell</name>
    <message>
        <location filename="../src/ui/IconWell.cpp" line="+27"/>
        <source>Drop a picture here, or click to choose one</source>
        <translation>Bild hierher ziehen oder klicken, um eines zu wählen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Repository icon</source>
        <translation>Repository-Symbol</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Choose an Icon</source>
        <translation>Ein Symbol wählen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Pictures (%1)</source>
        <translation>Bilder (%1)</translation>
    </message>
</context>
<context>
    <name>tillery::IgnoreFile</name>
    <message>
        <location filename="../src/integrations/IgnoreFile.cpp" line="+51"/>
        <source>An ignore entry must be one line of text.</source>
        <translation>Ein Ignorier-Eintrag muss eine einzelne Textzeile sein.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>%1 is a symbolic link, which Tillery never writes through; it was left unchanged. Edit the file it leads to yourself.</source>
        <translation>%1 ist ein symbolischer Link, durch den Tillery nie schreibt; die Datei blieb unverändert. Bearbeiten Sie die Datei, auf die er verweist, selbst.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>%1 could not be read; it was left unchanged.</source>
        <translation>%1 konnte nicht gelesen werden; die Datei blieb unverändert.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 is not UTF-8 text; it was left unchanged.</source>
        <translation>%1 ist kein UTF-8-Text; die Datei blieb unverändert.</translation>
    </message>
</context>
<context>
    <name>tillery::IntegrationChoices</name>
    <message>
        <location filename="../src/model/IntegrationChoices.cpp" line="+18"/>
        <source>%1 (not installed)</source>
        <translation>%1 (nicht installiert)</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Other Application…</source>
        <translation>Andere Anwendung…</translation>
    </message>
</context>
<context>
    <name>tillery::IntegrationsSettings</name>
    <message>
        <location filename="../src/ui/IntegrationsSettings.cpp" line="+38"/>
        <source>Choose…</source>
        <translation>Auswählen…</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Editor application</source>
        <translation>Editor-Anwendung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Application or program</source>
        <translation>Anwendung oder Programm</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Editor arguments</source>
        <translation>Editor-Argumente</translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+8"/>
        <source>Choose an Editor or Executable</source>
        <translation>Einen Editor oder ein Programm wählen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Terminal</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Application:</source>
        <translation>Anwendung:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Arguments:</source>
        <translation>Argumente:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%TARGET_PATH% stands for the file or repository to open. Put an argument with spaces in quotes.</source>
        <translation>%TARGET_PATH% steht für die zu öffnende Datei oder das Repository. Setzen Sie ein Argument mit Leerzeichen in Anführungszeichen.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Editor:</source>
        <translation>Editor:</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Terminal:</source>
        <translation>Terminal:</translation>
    </message>
</context>
<context>
    <name>tillery::KindTraits</name>
    <message>
        <location filename="../src/git/GitBackend.cpp" line="-158"/>
        <source>commit</source>
        <comment>noun</comment>
        <translation>Commit</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>commits</source>
        <comment>noun</comment>
        <translation>Commits</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>branch</source>
        <translation>Branch</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>branches</source>
        <translation>Branches</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>remote</source>
        <comment>noun</comment>
        <translation>Remote</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Create and check out a Git branch at the current commit.</source>
        <translation>Einen Git-Branch am aktuellen Commit erstellen und auschecken.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The branch will point to the current commit and be checked out.</source>
        <translation>Der Branch zeigt auf den aktuellen Commit und wird ausgecheckt.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>stash</source>
        <comment>noun</comment>
        <translation>Stash</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>stashes</source>
        <comment>noun</comment>
        <translation>Stashes</translation>
    </message>
    <message>
        <location filename="../src/mercurial/MercurialBackend.cpp" line="+36"/>
        <source>changeset</source>
        <translation>Changeset</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>changesets</source>
        <translation>Changesets</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>bookmark</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>bookmarks</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>path</source>
        <comment>where Mercurial pulls from and pushes to</comment>
        <translation>Pfad</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Create a Mercurial bookmark at the current changeset.</source>
        <translation>Ein Mercurial-Lesezeichen am aktuellen Changeset erstellen.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The bookmark will point to the current changeset and become active.</source>
        <translation>Das Lesezeichen zeigt auf das aktuelle Changeset und wird aktiv.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>shelf</source>
        <translation>Rückstellung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>shelves</source>
        <translation>Rückstellungen</translation>
    </message>
</context>
<context>
    <name>tillery::LastCommitActions</name>
    <message>
        <location filename="../src/model/LastCommitActions.cpp" line="-6"/>
        <source>“%1” will be taken back. Its changes return to the working copy, beside the changes already there.</source>
        <translation>„%1“ wird zurückgenommen. Seine Änderungen kehren in die Arbeitskopie zurück, neben die Änderungen, die schon dort sind.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The last commit will be taken back. Its changes return to the working copy, beside the changes already there.</source>
        <translation>Der letzte Commit wird zurückgenommen. Seine Änderungen kehren in die Arbeitskopie zurück, neben die Änderungen, die schon dort sind.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Undo the last commit?</source>
        <translation>Letzten Commit rückgängig machen?</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Undoing the last commit</source>
        <translation>Letzter Commit wird rückgängig gemacht</translation>
    </message>
</context>
<context>
    <name>tillery::Launcher</name>
    <message>
        <location filename="../src/integrations/Launcher.cpp" line="+28"/>
        <source>%1 could not be started: %2</source>
        <translation>%1 konnte nicht gestartet werden: %2</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>%1 could not open the repository.</source>
        <translation>%1 konnte das Repository nicht öffnen.</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Ghostty could not open the repository. Check that Ghostty is still installed.</source>
        <translation>Ghostty konnte das Repository nicht öffnen. Prüfen Sie, ob Ghostty noch installiert ist.</translation>
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
        <translation>Alle Änderungen zurückstellen</translation>
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
    <name>tillery::MercurialBackend</name>
    <message>
        <location filename="../src/mercurial/MercurialBackend.cpp" line="+7"/>
        <source>A bookmark name cannot contain “:”.</source>
        <translation>Ein Lesezeichenname darf kein „:“ enthalten.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>A bookmark name cannot be a number.</source>
        <translation>Ein Lesezeichenname darf keine Zahl sein.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>“%1” is a name Mercurial keeps for itself.</source>
        <translation>„%1“ ist ein Name, den Mercurial für sich selbst reserviert.</translation>
    </message>
    <message>
        <location line="+54"/>
        <source>There is no changeset yet.</source>
        <translation>Es gibt noch kein Changeset.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The last changeset is public, so others may have it; it can no longer be changed.</source>
        <translation>Das letzte Changeset ist öffentlich, andere können es also haben; es kann nicht mehr geändert werden.</translation>
    </message>
    <message>
        <location line="+106"/>
        <source>Mercurial has no squash merge; merge the bookmark or rebase onto it instead.</source>
        <translation>Mercurial kennt keinen Squash-Merge; mergen Sie stattdessen das Lesezeichen oder führen Sie einen Rebase darauf aus.</translation>
    </message>
</context>
<context>
    <name>tillery::MercurialConfigFile</name>
    <message>
        <location filename="../src/mercurial/MercurialConfigFile.cpp" line="+21"/>
        <source>The repository configuration file .hg/hgrc is a symbolic link, which Tillery never writes through; it was left unchanged.</source>
        <translation>Die Konfigurationsdatei .hg/hgrc des Repositorys ist ein symbolischer Link, durch den Tillery nie schreibt; sie blieb unverändert.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The repository configuration file .hg/hgrc could not be read; it was left unchanged.</source>
        <translation>Die Konfigurationsdatei .hg/hgrc des Repositorys konnte nicht gelesen werden; sie blieb unverändert.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The repository configuration file .hg/hgrc is not UTF-8 text; it was left unchanged.</source>
        <translation>Die Konfigurationsdatei .hg/hgrc des Repositorys ist kein UTF-8-Text; sie blieb unverändert.</translation>
    </message>
</context>
<context>
    <name>tillery::MercurialConflicts</name>
    <message>
        <location filename="../src/mercurial/MercurialConflicts.cpp" line="+22"/>
        <source>Some files still have conflicts; resolve them first.</source>
        <translation>Einige Dateien haben noch Konflikte; lösen Sie diese zuerst.</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>This repository&apos;s own configuration sets a merge tool (%1); Tillery runs only one that you set in your own Mercurial configuration.</source>
        <translation>Die eigene Konfiguration dieses Repositorys legt ein Merge-Werkzeug fest (%1); Tillery startet nur eines, das Sie in Ihrer eigenen Mercurial-Konfiguration festlegen.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>No merge tool is set in your Mercurial configuration (ui.merge).</source>
        <translation>In Ihrer Mercurial-Konfiguration ist kein Merge-Werkzeug festgelegt (ui.merge).</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>A merge needs a commit message.</source>
        <translation>Ein Merge braucht eine Commit-Nachricht.</translation>
    </message>
</context>
<context>
    <name>tillery::MercurialParsers</name>
    <message>
        <location filename="../src/mercurial/MercurialParsers.cpp" line="+150"/>
        <source>history is not a JSON array</source>
        <translation>der Verlauf ist kein JSON-Array</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Unknown</source>
        <comment>author</comment>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>bookmarks are not a JSON array</source>
        <translation>die Lesezeichen sind kein JSON-Array</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>annotations are not a JSON array</source>
        <translation>die Annotationen sind kein JSON-Array</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>no annotation of %1</source>
        <translation>keine Annotation von %1</translation>
    </message>
</context>
<context>
    <name>tillery::MercurialShelfParsers</name>
    <message>
        <location filename="../src/mercurial/MercurialShelfParsers.cpp" line="+106"/>
        <source>A shelf name cannot contain “/” or “\”.</source>
        <translation>Der Name einer Rückstellung darf kein „/“ oder „\“ enthalten.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>A shelf name cannot begin with “.”.</source>
        <translation>Der Name einer Rückstellung darf nicht mit „.“ beginnen.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>A shelf name cannot contain line breaks, tabs or other control characters.</source>
        <translation>Der Name einer Rückstellung darf keine Zeilenumbrüche, Tabulatoren oder anderen Steuerzeichen enthalten.</translation>
    </message>
    <message numerus="yes">
        <location line="+4"/>
        <source>A shelf name can be at most %n bytes long in UTF-8.</source>
        <translation>
            <numerusform>Der Name einer Rückstellung darf in UTF-8 höchstens %n Byte lang sein.</numerusform>
            <numerusform>Der Name einer Rückstellung darf in UTF-8 höchstens %n Byte lang sein.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tillery::MercurialShelves</name>
    <message>
        <location filename="../src/mercurial/MercurialShelves.cpp" line="+50"/>
        <source>The shelf “%1” no longer exists.</source>
        <translation>Die Rückstellung „%1“ existiert nicht mehr.</translation>
    </message>
    <message>
        <location line="+68"/>
        <source>A shelf named “%1” already exists.</source>
        <translation>Eine Rückstellung namens „%1“ existiert bereits.</translation>
    </message>
</context>
<context>
    <name>tillery::NewFileDiff</name>
    <message>
        <location filename="../src/process/NewFileDiff.cpp" line="+17"/>
        <source>Binary or unreadable file</source>
        <translation>Binäre oder unlesbare Datei</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>File too large to show</source>
        <translation>Datei zu groß zum Anzeigen</translation>
    </message>
</context>
<context>
    <name>tillery::OpenActions</name>
    <message>
        <location filename="../src/model/OpenActions.cpp" line="+16"/>
        <location line="+24"/>
        <source>Open in %1</source>
        <translation>In %1 öffnen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Open in Terminal</source>
        <translation>Im Terminal öffnen</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Open With %1</source>
        <translation>Mit %1 öffnen</translation>
    </message>
</context>
<context>
    <name>tillery::OperationInProgress</name>
    <message>
        <location filename="../src/records/OperationInProgress.cpp" line="+27"/>
        <source>Merge</source>
        <comment>title</comment>
        <translation>Merge</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Rebase</source>
        <comment>title</comment>
        <translation>Rebase</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Cherry-Pick</source>
        <comment>title</comment>
        <translation>Cherry-Pick</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Graft</source>
        <comment>title</comment>
        <translation>Graft</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Stash Restore</source>
        <comment>title</comment>
        <translation>Wiederherstellung aus dem Stash</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Unshelve</source>
        <comment>title</comment>
        <translation>Wiederherstellung der Rückstellung</translation>
    </message>
    <message>
        <location line="-14"/>
        <source>merge</source>
        <comment>within a sentence</comment>
        <translation>Merge</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>rebase</source>
        <comment>within a sentence</comment>
        <translation>Rebase</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>cherry-pick</source>
        <comment>within a sentence</comment>
        <translation>Cherry-Pick</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>graft</source>
        <comment>within a sentence</comment>
        <translation>Graft</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>stash restore</source>
        <comment>within a sentence</comment>
        <translation>Wiederherstellung aus dem Stash</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>unshelve</source>
        <comment>within a sentence</comment>
        <translation>Wiederherstellung der Rückstellung</translation>
    </message>
</context>
<context>
    <name>tillery::OptionLike</name>
    <message>
        <location filename="../src/mercurial/MercurialBackend.cpp" line="-50"/>
        <source>A shelf name cannot begin with “-”.</source>
        <translation>Der Name einer Rückstellung darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location filename="../src/process/BackendSteps.cpp" line="+13"/>
        <location filename="../src/process/ToolBackend.h" line="+157"/>
        <source>A revision cannot begin with “-”.</source>
        <translation>Eine Revision darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location filename="../src/process/ToolBackend.h" line="-51"/>
        <source>A clone source cannot begin with “-”.</source>
        <translation>Die Quelle eines Klons darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>A clone destination cannot begin with “-”.</source>
        <translation>Das Ziel eines Klons darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>A repository folder cannot begin with “-”.</source>
        <translation>Ein Repository-Ordner darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location line="+52"/>
        <source>A branch name cannot begin with “-”.</source>
        <translation>Ein Branch-Name darf nicht mit „-“ beginnen.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>A bookmark name cannot begin with “-”.</source>
        <translation>Ein Lesezeichenname darf nicht mit „-“ beginnen.</translation>
    </message>
</context>
<context>
    <name>tillery::RemoteAddress</name>
    <message>
        <location filename="../src/process/RemoteAddress.cpp" line="+72"/>
        <source>Enter a valid remote address: it cannot be empty, begin with “-” or hold a line break.</source>
        <translation>Geben Sie eine gültige Remote-Adresse ein: Sie darf nicht leer sein, nicht mit „-“ beginnen und keinen Zeilenumbruch enthalten.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The masked remote password could not be restored; enter the password again.</source>
        <translation>Das verborgene Remote-Passwort konnte nicht wiederhergestellt werden; geben Sie das Passwort erneut ein.</translation>
    </message>
</context>
<context>
    <name>tillery::RepositoryFile</name>
    <message>
        <location filename="../src/process/RepositoryFile.cpp" line="+18"/>
        <source>%1 could not be written: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
</context>
<context>
    <name>tillery::RepositoryLibrary</name>
    <message>
        <location filename="../src/model/RepositoryLibrary.cpp" line="+117"/>
        <source>New Folder</source>
        <translation>Neuer Ordner</translation>
    </message>
</context>
<context>
    <name>tillery::RepositorySettingsSheet</name>
    <message>
        <location filename="../src/ui/RepositorySettingsSheet.cpp" line="+32"/>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Remove Icon</source>
        <translation>Symbol entfernen</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+40"/>
        <source>Repository Settings</source>
        <translation>Repository-Einstellungen</translation>
    </message>
    <message>
        <location line="-38"/>
        <source>%1 remote address</source>
        <translation>Remote-Adresse %1</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Choose Image…</source>
        <translation>Bild wählen…</translation>
    </message>
    <message>
        <location line="+39"/>
        <source>Remote “%1”</source>
        <translation>Remote „%1“</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Set the %1 `%2` %3 used by Pull and Push. HTTPS, SSH, and local paths are supported.</source>
        <translation>Legen Sie fest, welche Adresse %1 als %3 `%2` für Pull und Push verwendet. HTTPS, SSH und lokale Pfade werden unterstützt.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Icon</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Choose a readable image file.</source>
        <translation>Wählen Sie eine lesbare Bilddatei.</translation>
    </message>
</context>
<context>
    <name>tillery::RepositoryWatcher</name>
    <message>
        <location filename="../src/model/RepositoryWatcher.cpp" line="+55"/>
        <source>Live refresh is limited: the system allows no more folders to be watched, so changes in some folders show when you come back to Tillery.</source>
        <translation>Die Live-Aktualisierung ist eingeschränkt: Das System erlaubt keine weiteren überwachten Ordner, daher erscheinen Änderungen in manchen Ordnern erst, wenn Sie zu Tillery zurückkehren.</translation>
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
        <location filename="../src/model/ShelfActions.cpp" line="-44"/>
        <source>The changes to “%1” are set aside under this name and leave the working copy.</source>
        <translation>Die Änderungen an „%1“ werden unter diesem Namen beiseitegelegt und verlassen die Arbeitskopie.</translation>
    </message>
    <message numerus="yes">
        <location line="+2"/>
        <source>The changes to the %n selected files are set aside under this name and leave the working copy.</source>
        <translation>
            <numerusform>Die Änderungen an der %n ausgewählten Datei werden unter diesem Namen beiseitegelegt und verlassen die Arbeitskopie.</numerusform>
            <numerusform>Die Änderungen an den %n ausgewählten Dateien werden unter diesem Namen beiseitegelegt und verlassen die Arbeitskopie.</numerusform>
        </translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Shelve Selected Files</source>
        <translation>Ausgewählte Dateien zurückstellen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Stash Selected Files</source>
        <translation>Ausgewählte Dateien in den Stash legen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Shelve</source>
        <translation>Zurückstellen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Stash</source>
        <comment>verb</comment>
        <translation>In den Stash legen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Shelving selected files</source>
        <translation>Ausgewählte Dateien werden zurückgestellt</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Stashing selected files</source>
        <translation>Ausgewählte Dateien werden in den Stash gelegt</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Restoring %1</source>
        <translation>%1 wird wiederhergestellt</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Delete the %1 “%2”?</source>
        <translation>%1 „%2“ löschen?</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Its changes will be gone for good.</source>
        <translation>Die Änderungen darin sind dann endgültig verloren.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Deleting %1</source>
        <translation>%1 wird gelöscht</translation>
    </message>
</context>
<context>
    <name>tillery::ShelfSelection</name>
    <message>
        <location filename="../src/model/ShelfSelection.cpp" line="+39"/>
        <source>Loading shelf files</source>
        <translation>Dateien der Rückstellung werden geladen</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Loading stash files</source>
        <translation>Dateien im Stash werden geladen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Loading files</source>
        <translation>Dateien werden geladen</translation>
    </message>
</context>
<context>
    <name>tillery::ShelvesView</name>
    <message>
        <location filename="../src/ui/ShelvesView.cpp" line="+87"/>
        <source>Shelves</source>
        <translation>Rückstellungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+1"/>
        <location line="+115"/>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <location line="-114"/>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Restore and Delete</source>
        <translation>Wiederherstellen und löschen</translation>
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
        <location line="+2"/>
        <source>Changes set aside with “Shelve Selected Files” on the Changes page show here.</source>
        <translation>Änderungen, die auf der Seite „Änderungen“ mit „Ausgewählte Dateien zurückstellen“ beiseitegelegt wurden, erscheinen hier.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Changes set aside with “Stash Selected Files” on the Changes page show here.</source>
        <translation>Änderungen, die auf der Seite „Änderungen“ mit „Ausgewählte Dateien in den Stash legen“ beiseitegelegt wurden, erscheinen hier.</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Files (%1)</source>
        <translation>Dateien (%1)</translation>
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
    <name>tillery::TerminalApplication</name>
    <message>
        <location filename="../src/integrations/TerminalApplication.cpp" line="+107"/>
        <source>Used by Open in Terminal. iTerm and Ghostty are shown when installed.</source>
        <translation>Wird von „Im Terminal öffnen“ verwendet. iTerm und Ghostty erscheinen, wenn sie installiert sind.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Used by Open in Terminal. Only the terminals installed on this computer are shown.</source>
        <translation>Wird von „Im Terminal öffnen“ verwendet. Nur die auf diesem Computer installierten Terminals erscheinen.</translation>
    </message>
</context>
<context>
    <name>tillery::TerminalLaunch</name>
    <message>
        <location filename="../src/integrations/TerminalLaunch.cpp" line="+83"/>
        <source>No terminal was found. Install one, such as GNOME Terminal, Konsole or xterm.</source>
        <translation>Es wurde kein Terminal gefunden. Installieren Sie eines, etwa GNOME Terminal, Konsole oder xterm.</translation>
    </message>
</context>
<context>
    <name>tillery::ToolFailure</name>
    <message numerus="yes">
        <location filename="../src/process/ToolFailure.cpp" line="+54"/>
        <source>[… %1 bytes left out …]</source>
        <translation>
            <numerusform>[… %1 Byte ausgelassen …]</numerusform>
            <numerusform>[… %1 Byte ausgelassen …]</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location line="+11"/>
        <source>[… %1 characters left out …]</source>
        <translation>
            <numerusform>[… %1 Zeichen ausgelassen …]</numerusform>
            <numerusform>[… %1 Zeichen ausgelassen …]</numerusform>
        </translation>
    </message>
    <message>
        <location line="+17"/>
        <source>%1 %2 exited with status %3.</source>
        <translation>%1 %2 endete mit Status %3.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>The repository is locked by another process. Try again when it has finished.</source>
        <translation>Das Repository ist von einem anderen Prozess gesperrt. Versuchen Sie es erneut, wenn dieser fertig ist.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>%1 is not a %2 repository.</source>
        <translation>%1 ist kein %2-Repository.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>%1 returned data that could not be read: %2</source>
        <translation>%1 lieferte Daten, die nicht gelesen werden konnten: %2</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>Mercurial (hg) was not found. Install Mercurial and ensure hg is available on PATH.</source>
        <translation>Mercurial (hg) wurde nicht gefunden. Installieren Sie Mercurial und stellen Sie sicher, dass hg über PATH erreichbar ist.</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Git was not found. Install Git and ensure git is available on PATH.</source>
        <translation>Git wurde nicht gefunden. Installieren Sie Git und stellen Sie sicher, dass git über PATH erreichbar ist.</translation>
    </message>
</context>
<context>
    <name>tillery::ToolRunner</name>
    <message>
        <location filename="../src/process/ToolRunner.cpp" line="+241"/>
        <source>The program could not be started.</source>
        <translation>Das Programm konnte nicht gestartet werden.</translation>
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
        <translation>Repositorys verwalten, Änderungen prüfen und mit Mercurial oder Git arbeiten, ohne den Desktop zu verlassen.</translation>
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
        <location filename="../src/model/WorkingCopyActions.cpp" line="-135"/>
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
        <location line="+37"/>
        <source>Amending the last commit</source>
        <translation>Letzter Commit wird ergänzt</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Committing changes</source>
        <translation>Änderungen werden committet</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Discard this changed line?</source>
        <translation>Diese geänderte Zeile verwerfen?</translation>
    </message>
    <message numerus="yes">
        <location line="+0"/>
        <source>Discard these %n changed lines?</source>
        <translation>
            <numerusform>Diese %n geänderte Zeile verwerfen?</numerusform>
            <numerusform>Diese %n geänderten Zeilen verwerfen?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <location line="+32"/>
        <source>Discard changes to %n selected files?</source>
        <translation>
            <numerusform>Änderungen an %n ausgewählter Datei verwerfen?</numerusform>
            <numerusform>Änderungen an %n ausgewählten Dateien verwerfen?</numerusform>
        </translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Discarding changes</source>
        <translation>Änderungen werden verworfen</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>“%1” is not inside the repository; it was not moved to the Trash.</source>
        <translation>„%1“ liegt nicht im Repository und wurde nicht in den Papierkorb verschoben.</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Discarding all changes</source>
        <translation>Alle Änderungen werden verworfen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Stashing all changes</source>
        <translation>Alle Änderungen werden zurückgestellt</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Updating %1</source>
        <translation>%1 wird aktualisiert</translation>
    </message>
    <message>
        <location line="-86"/>
        <source>They will be undone in “%1”. A copy of the file as it is now is kept in the folder “%2” of the repository&apos;s %3 folder.</source>
        <translation>Sie werden in „%1“ rückgängig gemacht. Eine Kopie der Datei in ihrem jetzigen Zustand bleibt im Ordner „%2“ des %3-Ordners des Repositorys erhalten.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Discarding lines</source>
        <translation>Zeilen werden verworfen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Discard changes to “%1”?</source>
        <translation>Änderungen an „%1“ verwerfen?</translation>
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
        <translation>Rückstellungen</translation>
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
