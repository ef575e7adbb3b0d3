<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Daylark</name>
    <message>
        <source>
Blue strip: frames that are ready</source>
        <translation>
Blauer Streifen: Bilder, die bereit sind</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source> frames</source>
        <translation> Bilder</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source> pixels</source>
        <translation> Pixel</translation>
    </message>
    <message>
        <source> · %1 more</source>
        <translation> · %1 weitere</translation>
    </message>
    <message>
        <source>#1 to #%1</source>
        <translation>Nr. 1 bis Nr. %1</translation>
    </message>
    <message>
        <source>%1 "%2" is not written: %3</source>
        <translation>%1 „%2“ ist nicht geschrieben: %3</translation>
    </message>
    <message>
        <source>%1 %2 of %3</source>
        <translation>%1 %2 von %3</translation>
    </message>
    <message>
        <source>%1 and %2 more: %3</source>
        <translation>%1 und %2 weitere: %3</translation>
    </message>
    <message>
        <source>%1 cannot be made</source>
        <translation>%1 lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>%1 channels</source>
        <translation>%1 Kanäle</translation>
    </message>
    <message>
        <source>%1 files looked at</source>
        <translation>%1 Dateien angesehen</translation>
    </message>
    <message>
        <source>%1 flags changed</source>
        <translation>%1 Flaggen geändert</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 B/s</translation>
    </message>
    <message>
        <source>%1 frames a second</source>
        <translation>%1 Bilder pro Sekunde</translation>
    </message>
    <message>
        <source>%1 grades replaced</source>
        <translation>%1 Gradings ersetzt</translation>
    </message>
    <message>
        <source>%1 is the key of %2.</source>
        <translation>%1 ist die Taste von %2.</translation>
    </message>
    <message>
        <source>%1 is there %2 times. Linked to %3, not to %4</source>
        <translation>%1 gibt es %2-mal. Zugeordnet: %3, nicht %4</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 Einträge</translation>
    </message>
    <message>
        <source>%1 missing</source>
        <translation>%1 fehlen</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 of %2 Items</source>
        <translation>%1 von %2 Einträgen</translation>
    </message>
    <message>
        <source>%1 pictures were left out: notes hold text</source>
        <translation>%1 Bilder entfallen: Notizen sind Text</translation>
    </message>
    <message>
        <source>%1 playlists: %2</source>
        <translation>%1 Playlists: %2</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 gewählt</translation>
    </message>
    <message>
        <source>%1 tracks: %2</source>
        <translation>%1 Spuren: %2</translation>
    </message>
    <message>
        <source>%1, number</source>
        <translation>%1, Zahl</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: trimming is off</source>
        <translation>%1: Kürzen ist aus</translation>
    </message>
    <message>
        <source>%n left out, not named in UTF-8: %1</source>
        <translation>%n ausgelassen, nicht in UTF-8 benannt: %1</translation>
    </message>
    <message>
        <source>%n found</source>
        <translation>%n gefunden</translation>
    </message>
    <message>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <source>1 channel</source>
        <translation>1 Kanal</translation>
    </message>
    <message>
        <source>1 item</source>
        <translation>1 Eintrag</translation>
    </message>
    <message>
        <source>1 to %1, a timecode, +8, -8</source>
        <translation>1 bis %1, ein Timecode, +8, -8</translation>
    </message>
    <message>
        <source>1001</source>
        <translation>1001</translation>
    </message>
    <message>
        <source>1:1 (Actual Size)</source>
        <translation>1:1 (Originalgröße)</translation>
    </message>
    <message>
        <source>1:1 Pixels (Actual Size)</source>
        <translation>1:1 Pixel (Originalgröße)</translation>
    </message>
    <message>
        <source>1:2 (Half Size)</source>
        <translation>1:2 (halbe Größe)</translation>
    </message>
    <message>
        <source>1:3 (Third Size)</source>
        <translation>1:3 (ein Drittel)</translation>
    </message>
    <message>
        <source>A number is the production's where the movie has its own, else counted from 1. "#" before it counts from 1 in any case.</source>
        <translation>Eine Zahl ist die der Produktion, wo der Film eigene hat, sonst ab 1 gezählt. Mit „#“ davor zählt sie immer ab 1.</translation>
    </message>
    <message>
        <source>A picture was left out: notes hold text</source>
        <translation>Ein Bild entfällt: Notizen sind Text</translation>
    </message>
    <message>
        <source>A second copy, with a session of its own</source>
        <translation>Ein zweites Daylark mit eigener Sitzung</translation>
    </message>
    <message>
        <source>&amp;About Daylark</source>
        <translation>&amp;Über Daylark</translation>
    </message>
    <message>
        <source>About Daylark</source>
        <translation>Über Daylark</translation>
    </message>
    <message>
        <source>active</source>
        <translation>aktiv</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Add %1 Items</source>
        <translation>%1 Einträge hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add Bookmark</source>
        <translation>Lesezeichen &amp;setzen</translation>
    </message>
    <message>
        <source>Add Bookmark</source>
        <translation>Lesezeichen setzen</translation>
    </message>
    <message>
        <source>Add Bookmarks</source>
        <translation>Lesezeichen setzen</translation>
    </message>
    <message>
        <source>Add Bundle</source>
        <translation>Bündel hinzufügen</translation>
    </message>
    <message>
        <source>Add Daylark Mo&amp;vie...</source>
        <translation>Daylark-&amp;Clip hinzufügen ...</translation>
    </message>
    <message>
        <source>Add Daylark Movies</source>
        <translation>Daylark-Clips hinzufügen</translation>
    </message>
    <message>
        <source>Add Divider</source>
        <translation>Trennlinie hinzufügen</translation>
    </message>
    <message>
        <source>Add Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Add Folder List</source>
        <translation>Ordnerliste hinzufügen</translation>
    </message>
    <message>
        <source>Add F&amp;older...</source>
        <translation>O&amp;rdner hinzufügen ...</translation>
    </message>
    <message>
        <source>Add Item</source>
        <translation>Eintrag hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add Key…</source>
        <translation>Taste &amp;hinzu …</translation>
    </message>
    <message>
        <source>Add Media</source>
        <translation>Medien hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Add Media...</source>
        <translation>Medien &amp;hinzufügen ...</translation>
    </message>
    <message>
        <source>Add Playlist</source>
        <translation>Playlist hinzufügen</translation>
    </message>
    <message>
        <source>Add Session</source>
        <translation>Sitzung hinzufügen</translation>
    </message>
    <message>
        <source>Add Smartlist</source>
        <translation>Smartlist hinzufügen</translation>
    </message>
    <message>
        <source>Add To Playlist</source>
        <translation>In die Playlist</translation>
    </message>
    <message>
        <source>Add To Session</source>
        <translation>Zur Sitzung hinzu</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Eigener</translation>
    </message>
    <message>
        <source>Added: %1</source>
        <translation>Eigener: %1</translation>
    </message>
    <message>
        <source>Adding Media Files...</source>
        <translation>Mediendateien werden hinzugefügt ...</translation>
    </message>
    <message>
        <source>after</source>
        <translation>nach</translation>
    </message>
    <message>
        <source>After every look at the files, under this folder</source>
        <translation>Nach jedem Blick auf die Dateien, in diesem Ordner</translation>
    </message>
    <message>
        <source>all</source>
        <translation>alle</translation>
    </message>
    <message>
        <source>All Files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>All files are missing</source>
        <translation>Alle Dateien fehlen</translation>
    </message>
    <message>
        <source>All Files Found</source>
        <translation>Alle Dateien gefunden</translation>
    </message>
    <message>
        <source>All Playlists</source>
        <translation>Alle Playlists</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>Immer</translation>
    </message>
    <message>
        <source>An invalid URL was passed to Daylark</source>
        <translation>Daylark bekam eine ungültige Adresse</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>and 1 more</source>
        <translation>und 1 weitere</translation>
    </message>
    <message>
        <source>and more</source>
        <translation>und mehr</translation>
    </message>
    <message>
        <source>Another copy of Daylark is at work (on %1): this one keeps a session of its own</source>
        <translation>Ein anderes Daylark läuft (auf %1): Dieses hat eine eigene Sitzung</translation>
    </message>
    <message>
        <source>Another number</source>
        <translation>Eine andere Zahl</translation>
    </message>
    <message>
        <source>Another rule</source>
        <translation>Noch eine Regel</translation>
    </message>
    <message>
        <source>any</source>
        <translation>eine</translation>
    </message>
    <message>
        <source>Any Flag</source>
        <translation>Mit Flagge</translation>
    </message>
    <message>
        <source>are not there</source>
        <translation>gibt es nicht</translation>
    </message>
    <message>
        <source>are there</source>
        <translation>gibt es</translation>
    </message>
    <message>
        <source>As a list</source>
        <translation>Als Liste</translation>
    </message>
    <message>
        <source>As I left it</source>
        <translation>Wie zuletzt</translation>
    </message>
    <message>
        <source>As &amp;List</source>
        <translation>Als &amp;Liste</translation>
    </message>
    <message>
        <source>As the file says</source>
        <translation>Wie die Datei sagt</translation>
    </message>
    <message>
        <source>As the file says: %1</source>
        <translation>Wie die Datei sagt: %1</translation>
    </message>
    <message>
        <source>As &amp;Tiles</source>
        <translation>Als &amp;Kacheln</translation>
    </message>
    <message>
        <source>As tiles</source>
        <translation>Als Kacheln</translation>
    </message>
    <message>
        <source>At every start</source>
        <translation>Bei jedem Start</translation>
    </message>
    <message>
        <source>At first: %1</source>
        <translation>Anfangs: %1</translation>
    </message>
    <message>
        <source>At first: no key</source>
        <translation>Anfangs: keine Taste</translation>
    </message>
    <message>
        <source>A&amp;udio</source>
        <translation>A&amp;udio</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Back to %1</source>
        <translation>Zurück zu %1</translation>
    </message>
    <message>
        <source>&amp;Bake Current Sort Order</source>
        <translation>Sortierung &amp;festschreiben</translation>
    </message>
    <message>
        <source>before</source>
        <translation>vor</translation>
    </message>
    <message>
        <source>begins with</source>
        <translation>beginnt mit</translation>
    </message>
    <message>
        <source>Behind</source>
        <translation>Dahinter</translation>
    </message>
    <message>
        <source>Behind drawings</source>
        <translation>Hinter den Zeichnungen</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Black and White Point</source>
        <translation>Schwarz- und Weißpunkt</translation>
    </message>
    <message>
        <source>Black and White Point…</source>
        <translation>Schwarz- und Weißpunkt …</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>BMs</source>
        <translation>LZ</translation>
    </message>
    <message>
        <source>Bold (Ctrl+B)</source>
        <translation>Fett (Strg+B)</translation>
    </message>
    <message>
        <source>Bookmark from &amp;Range</source>
        <translation>Lesezeichen aus Be&amp;reich</translation>
    </message>
    <message>
        <source>Bookmark from Range</source>
        <translation>Lesezeichen aus Bereich</translation>
    </message>
    <message>
        <source>Bookmark In</source>
        <translation>Lesezeichen In</translation>
    </message>
    <message>
        <source>Bookmark Length</source>
        <translation>Länge des Lesezeichens</translation>
    </message>
    <message>
        <source>Bookmark Note</source>
        <translation>Notiz des Lesezeichens</translation>
    </message>
    <message>
        <source>Bookmark Out</source>
        <translation>Lesezeichen Out</translation>
    </message>
    <message>
        <source>Bookmark Text</source>
        <translation>Text des Lesezeichens</translation>
    </message>
    <message>
        <source>Bookmark Te&amp;xt on Picture</source>
        <translation>Lesezeichen-Te&amp;xt im Bild</translation>
    </message>
    <message>
        <source>Bookmark texts</source>
        <translation>Texte der Lesezeichen</translation>
    </message>
    <message>
        <source>&amp;Bookmarks</source>
        <translation>&amp;Lesezeichen</translation>
    </message>
    <message>
        <source>Bookmarks</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <source>Bookmarks and drawings</source>
        <translation>Lesezeichen und Zeichnungen</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Helligkeit</translation>
    </message>
    <message>
        <source>&amp;Bring Viewer Forward</source>
        <translation>&amp;Betrachter nach vorn</translation>
    </message>
    <message>
        <source>Brush colour</source>
        <translation>Pinselfarbe</translation>
    </message>
    <message>
        <source>By the production's numbers</source>
        <translation>Nach den Nummern der Produktion</translation>
    </message>
    <message>
        <source>Cache     %1 of %2 MiB</source>
        <translation>Puffer    %1 von %2 MiB</translation>
    </message>
    <message>
        <source>Came by a link</source>
        <translation>Kam über einen Link</translation>
    </message>
    <message>
        <source>Can't resolve link</source>
        <translation>Der Link lässt sich nicht auflösen</translation>
    </message>
    <message>
        <source>Can't resolve linked files</source>
        <translation>Die verlinkten Dateien fehlen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel the job</source>
        <translation>Vorgang abbrechen</translation>
    </message>
    <message>
        <source>CCs</source>
        <translation>FK</translation>
    </message>
    <message>
        <source>Chan&amp;ge Key…</source>
        <translation>Taste ä&amp;ndern …</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <source>Changes are not stored</source>
        <translation>Änderungen werden nicht gesichert</translation>
    </message>
    <message>
        <source>Changes are not stored: %1</source>
        <translation>Änderungen werden nicht gesichert: %1</translation>
    </message>
    <message>
        <source>Choose another value</source>
        <translation>Einen anderen Wert wählen</translation>
    </message>
    <message>
        <source>Choose Folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose Folder of Automatic Sear&amp;ches...</source>
        <translation>&amp;Ordner der automatischen Suche ...</translation>
    </message>
    <message>
        <source>Choose Folder To Display</source>
        <translation>Ordner zum Zeigen wählen</translation>
    </message>
    <message>
        <source>Choose Folders To Add</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Choose Media Files To Add</source>
        <translation>Mediendateien wählen</translation>
    </message>
    <message>
        <source>Choose the folder of automatic searches</source>
        <translation>Den Ordner der automatischen Suche wählen</translation>
    </message>
    <message>
        <source>Choose The Root Folder For Automatic Searches</source>
        <translation>Ordner der automatischen Suche wählen</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Wählen ...</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>&amp;Clear Recent Sessions</source>
        <translation>Liste &amp;leeren</translation>
    </message>
    <message>
        <source>&amp;Clear Session</source>
        <translation>Sitzung &amp;leeren</translation>
    </message>
    <message>
        <source>Clear Session</source>
        <translation>Sitzung leeren</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close (Esc)</source>
        <translation>Schließen (Esc)</translation>
    </message>
    <message>
        <source>Close the find panel</source>
        <translation>Suche schließen</translation>
    </message>
    <message>
        <source>&amp;Close Viewer</source>
        <translation>Betrachter s&amp;chließen</translation>
    </message>
    <message>
        <source>Codec</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Colour Configuration</source>
        <translation>Farbkonfiguration</translation>
    </message>
    <message>
        <source>Colour configurations</source>
        <translation>Farbkonfigurationen</translation>
    </message>
    <message>
        <source>&amp;Colour Correction</source>
        <translation>&amp;Farbkorrektur</translation>
    </message>
    <message>
        <source>Colour Correction</source>
        <translation>Farbkorrektur</translation>
    </message>
    <message>
        <source>Colour correction</source>
        <translation>Farbkorrektur</translation>
    </message>
    <message>
        <source>Colour &amp;Management</source>
        <translation>Farb&amp;management</translation>
    </message>
    <message>
        <source>Colour Management</source>
        <translation>Farbmanagement</translation>
    </message>
    <message>
        <source>Colour of the Brush</source>
        <translation>Farbe des Pinsels</translation>
    </message>
    <message>
        <source>Colour of the brush</source>
        <translation>Farbe des Pinsels</translation>
    </message>
    <message>
        <source>Colour of the brush…</source>
        <translation>Farbe des Pinsels …</translation>
    </message>
    <message>
        <source>Colour of the texts over the picture…</source>
        <translation>Farbe der Texte über dem Bild …</translation>
    </message>
    <message>
        <source>Colour tags</source>
        <translation>Farbangaben</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Combine All Playlists</source>
        <translation>Alle Playlists vereinen</translation>
    </message>
    <message>
        <source>Combine Playlists</source>
        <translation>Playlists vereinen</translation>
    </message>
    <message>
        <source>Combine Selected Playlists</source>
        <translation>Gewählte Playlists vereinen</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Commands and their keys</source>
        <translation>Befehle und ihre Tasten</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Constrain Viewer To Movie Proportions</source>
        <translation>Betrachter in den Proportionen des Clips</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>enthält</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>Controls</source>
        <translation>Bedienung</translation>
    </message>
    <message>
        <source>Controls at the lower edge</source>
        <translation>Bedienung am unteren Rand</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy All Bookmarks</source>
        <translation>Alle Lesezeichen kopieren</translation>
    </message>
    <message>
        <source>Copy Bookmarks</source>
        <translation>Lesezeichen kopieren</translation>
    </message>
    <message>
        <source>Copy Complete</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Copy &amp;Filename</source>
        <translation>&amp;Dateinamen kopieren</translation>
    </message>
    <message>
        <source>C&amp;opy Grade</source>
        <translation>Grading k&amp;opieren</translation>
    </message>
    <message>
        <source>Copy Media</source>
        <translation>Medien kopieren</translation>
    </message>
    <message>
        <source>Copy Media To New Destination</source>
        <translation>Medien an einen neuen Ort kopieren</translation>
    </message>
    <message>
        <source>Copy Movie &amp;Link</source>
        <translation>Clip-&amp;Link kopieren</translation>
    </message>
    <message>
        <source>&amp;Copy Path</source>
        <translation>&amp;Pfad kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>&amp;Pfad kopieren</translation>
    </message>
    <message>
        <source>Copy Playlist Lin&amp;k</source>
        <translation>Playlist-Lin&amp;k kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Timecode</source>
        <translation>&amp;Timecode kopieren</translation>
    </message>
    <message>
        <source>Copy Unmuted Bookmarks</source>
        <translation>Nicht stumme Lesezeichen kopieren</translation>
    </message>
    <message>
        <source>Counter starts at</source>
        <translation>Zähler beginnt bei</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Creating Thumbnails...</source>
        <translation>Vorschaubilder entstehen ...</translation>
    </message>
    <message>
        <source>Ctrl+Wheel</source>
        <translation>Strg+Rad</translation>
    </message>
    <message>
        <source>Current Frame</source>
        <translation>Jetziges Bild</translation>
    </message>
    <message>
        <source>Daylark movie</source>
        <translation>Daylark-Clip</translation>
    </message>
    <message>
        <source>Daylark's own</source>
        <translation>Daylarks eigene</translation>
    </message>
    <message>
        <source>Decoder   %1</source>
        <translation>Decoder   %1</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Default head handle</source>
        <translation>Üblicher Vorlauf</translation>
    </message>
    <message>
        <source>Default tail handle</source>
        <translation>Üblicher Nachlauf</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Dim what all names of a list begin with</source>
        <translation>Gemeinsamen Namensanfang abblenden</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>&amp;Display</source>
        <translation>&amp;Anzeige</translation>
    </message>
    <message>
        <source>Display, 8 bit</source>
        <translation>Anzeige, 8 Bit</translation>
    </message>
    <message>
        <source>Display: %1</source>
        <translation>Anzeige: %1</translation>
    </message>
    <message>
        <source>&amp;Dock Panels</source>
        <translation>Felder an&amp;docken</translation>
    </message>
    <message>
        <source>Dock panels that would cover the picture, when all are shown</source>
        <translation>Felder andocken, die das Bild verdecken würden</translation>
    </message>
    <message>
        <source>does not contain</source>
        <translation>enthält nicht</translation>
    </message>
    <message>
        <source>Double-click resets %1</source>
        <translation>Doppelklick setzt %1 zurück</translation>
    </message>
    <message>
        <source>Draw with the brush (T changes)</source>
        <translation>Mit dem Pinsel zeichnen (T wechselt)</translation>
    </message>
    <message>
        <source>&amp;Drawing</source>
        <translation>&amp;Zeichnung</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Drawing Tool &amp;On or Off</source>
        <translation>Werkzeug &amp;ein oder aus</translation>
    </message>
    <message>
        <source>&amp;Drawing Tools</source>
        <translation>&amp;Zeichenwerkzeuge</translation>
    </message>
    <message>
        <source>Drawing Tools</source>
        <translation>Zeichenwerkzeuge</translation>
    </message>
    <message>
        <source>Drawings</source>
        <translation>Zeichnungen</translation>
    </message>
    <message>
        <source>Drawings will also be removed</source>
        <translation>Zeichnungen werden auch entfernt</translation>
    </message>
    <message>
        <source>Drop folders here,
each becomes a playlist</source>
        <translation>Ordner hierher ziehen:
jeder wird eine Playlist</translation>
    </message>
    <message>
        <source>Drop movies or folders here</source>
        <translation>Clips oder Ordner hierher ziehen</translation>
    </message>
    <message>
        <source>Dropped   %1 of %2</source>
        <translation>Ausgel.   %1 von %2</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Duration in all</source>
        <translation>Dauer insgesamt</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Edit Bookmark Text</source>
        <translation>T&amp;ext bearbeiten</translation>
    </message>
    <message>
        <source>Elapsed time</source>
        <translation>Verstrichene Zeit</translation>
    </message>
    <message>
        <source>Else always as a question; what is typed or marked is always answered</source>
        <translation>Sonst immer als Frage; auf Getipptes oder Gesetztes wird immer geantwortet</translation>
    </message>
    <message>
        <source>Empty: by its pictures, else as below</source>
        <translation>Leer: nach ihren Bildern, sonst wie unten</translation>
    </message>
    <message>
        <source>Erase from the drawing</source>
        <translation>In der Zeichnung radieren</translation>
    </message>
    <message>
        <source>Eraser Stroke</source>
        <translation>Radierstrich</translation>
    </message>
    <message>
        <source>Every command gets back the keys that it had at first</source>
        <translation>Jeder Befehl bekommt seine ersten Tasten wieder</translation>
    </message>
    <message>
        <source>Every preference goes back to what it was at first</source>
        <translation>Jede Einstellung wird wieder, was sie am Anfang war</translation>
    </message>
    <message>
        <source>Every start begins with Loop Movie</source>
        <translation>Jeder Start beginnt mit „Clip in Schleife“</translation>
    </message>
    <message>
        <source>Exact loops: a range turns at its very last frame</source>
        <translation>Genaue Schleifen: Umkehr beim letzten Bild</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Export As</source>
        <translation>Exportieren als</translation>
    </message>
    <message>
        <source>Export Daylark Movie</source>
        <translation>Daylark-Clip exportieren</translation>
    </message>
    <message>
        <source>Export Daylar&amp;k Movie File...</source>
        <translation>Daylar&amp;k-Clip-Datei exportieren ...</translation>
    </message>
    <message>
        <source>Export Da&amp;ylark Movie...</source>
        <translation>Da&amp;ylark-Clip exportieren ...</translation>
    </message>
    <message>
        <source>Export &amp;Movie Notes...</source>
        <translation>&amp;Clip-Notizen exportieren ...</translation>
    </message>
    <message>
        <source>Export Notes</source>
        <translation>Notizen exportieren</translation>
    </message>
    <message>
        <source>Export Playlist Mani&amp;fest...</source>
        <translation>Playlist-Mani&amp;fest exportieren ...</translation>
    </message>
    <message>
        <source>&amp;Export Playlist Notes...</source>
        <translation>Playlist-Notizen &amp;exportieren ...</translation>
    </message>
    <message>
        <source>Export Selected Playlists As Sessio&amp;n...</source>
        <translation>Gewählte Playlists als Sitzu&amp;ng exportieren ...</translation>
    </message>
    <message>
        <source>Export Session As &amp;Reviewed...</source>
        <translation>Sitzung als gesichtet expo&amp;rtieren ...</translation>
    </message>
    <message>
        <source>Exported session</source>
        <translation>Exportierte Sitzung</translation>
    </message>
    <message>
        <source>Exporting Daylark Movie</source>
        <translation>Daylark-Clip wird exportiert</translation>
    </message>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
    <message>
        <source>Exposure for looking, stops</source>
        <translation>Belichtung zum Ansehen, Blenden</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Favourite Viewer Size</source>
        <translation>Bevorzugte Größe des Betrachters</translation>
    </message>
    <message>
        <source>File format</source>
        <translation>Dateiformat</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>File &amp;Name on Picture</source>
        <translation>Datei&amp;name im Bild</translation>
    </message>
    <message>
        <source>File names with their extension</source>
        <translation>Dateinamen mit Endung</translation>
    </message>
    <message>
        <source>File Not Found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>File not found
%1</source>
        <translation>Datei nicht gefunden
%1</translation>
    </message>
    <message>
        <source>file was not found.</source>
        <translation>Datei wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>files were not found.</source>
        <translation>Dateien wurden nicht gefunden.</translation>
    </message>
    <message>
        <source>&amp;Filter</source>
        <translation>&amp;Filter</translation>
    </message>
    <message>
        <source>Filter: %1</source>
        <translation>Filter: %1</translation>
    </message>
    <message>
        <source>Filter: Flag %1</source>
        <translation>Filter: Flagge %1</translation>
    </message>
    <message>
        <source>Filter: Show All</source>
        <translation>Filter: Alle zeigen</translation>
    </message>
    <message>
        <source>F&amp;ind</source>
        <translation>S&amp;uchen</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find a command or a key</source>
        <translation>Befehl oder Taste suchen</translation>
    </message>
    <message>
        <source>Find files by their path (network volumes)</source>
        <translation>Dateien über den Pfad finden (Netzlaufwerke)</translation>
    </message>
    <message>
        <source>Find in all playlists</source>
        <translation>In allen Playlists suchen</translation>
    </message>
    <message>
        <source>Find Items</source>
        <translation>Einträge suchen</translation>
    </message>
    <message>
        <source>Find looks at</source>
        <translation>Gesucht wird in</translation>
    </message>
    <message>
        <source>Find Missing Media of Selected &amp;Playlists...</source>
        <translation>Fehlende Medien der gewählten &amp;Playlists suchen ...</translation>
    </message>
    <message>
        <source>Find Missing Media of &amp;Session...</source>
        <translation>Fehlende Medien der &amp;Sitzung suchen ...</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>&amp;Nächster Fund</translation>
    </message>
    <message>
        <source>Find Pre&amp;vious</source>
        <translation>&amp;Voriger Fund</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation>&amp;Suchen ...</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Erstes</translation>
    </message>
    <message>
        <source>First Bookmark</source>
        <translation>Erstes Lesezeichen</translation>
    </message>
    <message>
        <source>F&amp;irst Frame</source>
        <translation>&amp;Erstes Bild</translation>
    </message>
    <message>
        <source>First Frame</source>
        <translation>Erstes Bild</translation>
    </message>
    <message>
        <source>First frame is production number</source>
        <translation>Das erste Bild hat die Nummer</translation>
    </message>
    <message>
        <source>First Frame Number</source>
        <translation>Nummer des ersten Bilds</translation>
    </message>
    <message>
        <source>First notes are called</source>
        <translation>Die ersten Notizen heißen</translation>
    </message>
    <message>
        <source>First TC</source>
        <translation>Erster TC</translation>
    </message>
    <message>
        <source>Fit Image To Viewer</source>
        <translation>Bild in den Betrachter einpassen</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>Fest</translation>
    </message>
    <message>
        <source>&amp;Flag</source>
        <translation>&amp;Flagge</translation>
    </message>
    <message>
        <source>Flag</source>
        <translation>Flagge</translation>
    </message>
    <message>
        <source>Flag: %1</source>
        <translation>Flagge: %1</translation>
    </message>
    <message>
        <source>Flagged</source>
        <translation>Mit Flagge</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Flaggen</translation>
    </message>
    <message>
        <source>Flip Display</source>
        <translation>Anzeige auf den Kopf stellen</translation>
    </message>
    <message>
        <source>Flip, upside down</source>
        <translation>Auf dem Kopf</translation>
    </message>
    <message>
        <source>Floa&amp;t Panels</source>
        <translation>Felder &amp;lösen</translation>
    </message>
    <message>
        <source>Floating</source>
        <translation>Schwebend</translation>
    </message>
    <message>
        <source>Flop Display</source>
        <translation>Anzeige seitlich spiegeln</translation>
    </message>
    <message>
        <source>Flop, left to right</source>
        <translation>Seitenverkehrt</translation>
    </message>
    <message>
        <source>&amp;Force Relink of Selected Playlists...</source>
        <translation>Gewählte Playlists &amp;neu zuordnen ...</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Frame %1</source>
        <translation>Bild %1</translation>
    </message>
    <message>
        <source>Frame %1
%2</source>
        <translation>Bild %1
%2</translation>
    </message>
    <message>
        <source>Frame &amp;Counter on Picture</source>
        <translation>Bild&amp;zähler im Bild</translation>
    </message>
    <message>
        <source>Frame counter, from</source>
        <translation>Bildzähler, ab</translation>
    </message>
    <message>
        <source>Frame number or timecode</source>
        <translation>Bildnummer oder Timecode</translation>
    </message>
    <message>
        <source>Frame on screen</source>
        <translation>Bild auf dem Schirm</translation>
    </message>
    <message>
        <source>Frame Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Frame Rate…</source>
        <translation>Bildrate …</translation>
    </message>
    <message>
        <source>Frame, counted from 1</source>
        <translation>Bild, ab 1 gezählt</translation>
    </message>
    <message>
        <source>Frames</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Frames a second of runs</source>
        <translation>Bilder pro Sekunde von Serien</translation>
    </message>
    <message>
        <source>Frames a second; 0 for what the pictures say:</source>
        <translation>Bilder pro Sekunde; 0: was die Bilder sagen:</translation>
    </message>
    <message>
        <source>Frames in all</source>
        <translation>Bilder insgesamt</translation>
    </message>
    <message>
        <source>Frames of a new bookmark</source>
        <translation>Bilder eines neuen Lesezeichens</translation>
    </message>
    <message>
        <source>From the next start on</source>
        <translation>Ab dem nächsten Start</translation>
    </message>
    <message>
        <source>From the next time that the viewer opens</source>
        <translation>Ab dem nächsten Öffnen des Betrachters</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Full Screen O&amp;n</source>
        <translation>&amp;Vollbild auf</translation>
    </message>
    <message>
        <source>Full screen: both away</source>
        <translation>Vollbild: beide weg</translation>
    </message>
    <message>
        <source>Full screen: the controls</source>
        <translation>Vollbild: die Bedienung</translation>
    </message>
    <message>
        <source>Full screen: the playlist</source>
        <translation>Vollbild: die Playlist</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>Gamma for looking</source>
        <translation>Gamma zum Ansehen</translation>
    </message>
    <message>
        <source>Gat&amp;her Media In Playlist...</source>
        <translation>Medien der Playlist sa&amp;mmeln ...</translation>
    </message>
    <message>
        <source>Gather Media In Selected Play&amp;lists...</source>
        <translation>Medien der gewählten Play&amp;lists sammeln ...</translation>
    </message>
    <message>
        <source>&amp;Gather Selected Media Files...</source>
        <translation>&amp;Gewählte Mediendateien sammeln ...</translation>
    </message>
    <message>
        <source>&amp;Gather Selected Media...</source>
        <translation>&amp;Gewählte Medien sammeln ...</translation>
    </message>
    <message>
        <source>Gathering Media File %1 of %2</source>
        <translation>Mediendatei %1 von %2 wird kopiert</translation>
    </message>
    <message>
        <source>Gathering Media: File %1 of %2</source>
        <translation>Medien sammeln: Datei %1 von %2</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Go on at the item reviewed last</source>
        <translation>Beim zuletzt gesichteten Eintrag weitermachen</translation>
    </message>
    <message>
        <source>Go to</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>Go to First Frame</source>
        <translation>Zum ersten Bild</translation>
    </message>
    <message>
        <source>&amp;Go to First Frame of Bookmark</source>
        <translation>Zum ersten &amp;Bild des Lesezeichens</translation>
    </message>
    <message>
        <source>&amp;Go to Frame...</source>
        <translation>&amp;Gehe zu Bild ...</translation>
    </message>
    <message>
        <source>Go to &amp;Items</source>
        <translation>Zu den &amp;Einträgen</translation>
    </message>
    <message>
        <source>Go to Last Frame</source>
        <translation>Zum letzten Bild</translation>
    </message>
    <message>
        <source>Go to &amp;Playlists</source>
        <translation>Zu den &amp;Playlists</translation>
    </message>
    <message>
        <source>&amp;Grade</source>
        <translation>&amp;Grading</translation>
    </message>
    <message>
        <source>Grade</source>
        <translation>Grading</translation>
    </message>
    <message>
        <source>Grade Off</source>
        <translation>Grading aus</translation>
    </message>
    <message>
        <source>Grade On</source>
        <translation>Grading ein</translation>
    </message>
    <message>
        <source>Graphics hardware, where there is</source>
        <translation>die Grafikkarte, wo es eine gibt</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>Grau</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Half Window Size</source>
        <translation>Halbes Fenster</translation>
    </message>
    <message>
        <source>Handles</source>
        <translation>Handles</translation>
    </message>
    <message>
        <source>Handles are longer than movie</source>
        <translation>Die Handles sind länger als der Clip</translation>
    </message>
    <message>
        <source>Has a grade</source>
        <translation>Hat ein Grading</translation>
    </message>
    <message>
        <source>Has bookmarks</source>
        <translation>Hat Lesezeichen</translation>
    </message>
    <message>
        <source>Has drawings</source>
        <translation>Hat Zeichnungen</translation>
    </message>
    <message>
        <source>Has notes</source>
        <translation>Hat Notizen</translation>
    </message>
    <message>
        <source>Head and tail, frames</source>
        <translation>Vor- und Nachlauf, Bilder</translation>
    </message>
    <message>
        <source>Head handle</source>
        <translation>Vorlauf</translation>
    </message>
    <message>
        <source>Head handle, frames</source>
        <translation>Vorlauf, Bilder</translation>
    </message>
    <message>
        <source>Held</source>
        <translation>Gehalten</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>%1 ausblenden</translation>
    </message>
    <message>
        <source>&amp;Hide All Panels</source>
        <translation>Alle Felder &amp;ausblenden</translation>
    </message>
    <message>
        <source>Hide Mask</source>
        <translation>Kasch ausblenden</translation>
    </message>
    <message>
        <source>Hide the library while the viewer is open</source>
        <translation>Bibliothek beim Betrachten ausblenden</translation>
    </message>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <source>How it compares</source>
        <translation>Wie sie vergleicht</translation>
    </message>
    <message>
        <source>How many of the rules must hold</source>
        <translation>Wie viele Regeln gelten müssen</translation>
    </message>
    <message>
        <source>How much memory decoded pictures may take, so that stepping and playing back and forth need not wait. Automatic: a quarter of this machine's memory, at most 4096 MB. The blue strip under the position slider shows which frames are ready.</source>
        <translation>Wie viel Speicher dekodierte Bilder belegen dürfen, damit Schritte und Vor- und Zurückspielen nicht warten. Automatisch: ein Viertel des Speichers, höchstens 4096 MB. Der blaue Streifen unter dem Schieber zeigt, welche Bilder bereit sind.</translation>
    </message>
    <message>
        <source>&amp;Import Session</source>
        <translation>Sitzung &amp;importieren</translation>
    </message>
    <message>
        <source>Import Session</source>
        <translation>Sitzung importieren</translation>
    </message>
    <message>
        <source>In a window of its own</source>
        <translation>in eigenem Fenster</translation>
    </message>
    <message>
        <source>In Playlist &amp;Order</source>
        <translation>In &amp;Playlist-Reihenfolge</translation>
    </message>
    <message>
        <source>in the last days</source>
        <translation>in den letzten Tagen</translation>
    </message>
    <message>
        <source>Input Space</source>
        <translation>Eingangsfarbraum</translation>
    </message>
    <message>
        <source>Input space</source>
        <translation>Eingangsfarbraum</translation>
    </message>
    <message>
        <source>Instance</source>
        <translation>Instanz</translation>
    </message>
    <message>
        <source>Instance items to "%1"?</source>
        <translation>Einträge als Instanzen in „%1“?</translation>
    </message>
    <message>
        <source>Invert Muted Bookmarks</source>
        <translation>Stumme Lesezeichen umkehren</translation>
    </message>
    <message>
        <source>is</source>
        <translation>ist</translation>
    </message>
    <message>
        <source>is above</source>
        <translation>ist über</translation>
    </message>
    <message>
        <source>is below</source>
        <translation>ist unter</translation>
    </message>
    <message>
        <source>is found</source>
        <translation>ist da</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>is narrower than</source>
        <translation>ist schmaler als</translation>
    </message>
    <message>
        <source>is not</source>
        <translation>ist nicht</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>gibt es nicht</translation>
    </message>
    <message>
        <source>is there</source>
        <translation>gibt es</translation>
    </message>
    <message>
        <source>is wider than</source>
        <translation>ist breiter als</translation>
    </message>
    <message>
        <source>it can not be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>it has no file name</source>
        <translation>kein Dateiname</translation>
    </message>
    <message>
        <source>Italic (Ctrl+I)</source>
        <translation>Kursiv (Strg+I)</translation>
    </message>
    <message>
        <source>&amp;Item</source>
        <translation>&amp;Eintrag</translation>
    </message>
    <message>
        <source>Item &amp;Information</source>
        <translation>Eintrags-&amp;Info</translation>
    </message>
    <message>
        <source>Item information</source>
        <translation>Eintrags-Info</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Einträge</translation>
    </message>
    <message>
        <source>Items as a List</source>
        <translation>Einträge als Liste</translation>
    </message>
    <message>
        <source>Items as a list</source>
        <translation>Einträge als Liste</translation>
    </message>
    <message>
        <source>Items as Tiles</source>
        <translation>Einträge als Kacheln</translation>
    </message>
    <message>
        <source>Items as tiles</source>
        <translation>Einträge als Kacheln</translation>
    </message>
    <message>
        <source>Items in Playlist Order</source>
        <translation>Einträge in Playlist-Reihenfolge</translation>
    </message>
    <message>
        <source>Items in the Order of the List</source>
        <translation>Einträge in der Reihenfolge der Liste</translation>
    </message>
    <message>
        <source>Items of all playlists for which</source>
        <translation>Einträge aller Playlists, für die</translation>
    </message>
    <message>
        <source>its folder is gone</source>
        <translation>der Ordner ist weg</translation>
    </message>
    <message>
        <source>Keep Modified Duplicates</source>
        <translation>Bearbeitete behalten</translation>
    </message>
    <message>
        <source>Keep the window in the movie's proportions</source>
        <translation>Fenster im Seitenverhältnis des Clips halten</translation>
    </message>
    <message>
        <source>Keep These Frames</source>
        <translation>Diese Bilder behalten</translation>
    </message>
    <message>
        <source>Kept in the session: goes before the one chosen here, which goes before $OCIO</source>
        <translation>In der Sitzung: geht vor der hier gewählten, diese vor $OCIO</translation>
    </message>
    <message>
        <source>Kept with the desktop's own thumbnails, not in the session</source>
        <translation>Bei denen des Desktops abgelegt, nicht in der Sitzung</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Keys alone or with Shift go by their place: they are named as a US keyboard prints them. With Ctrl, Alt or Meta they go by what they print.</source>
        <translation>Tasten allein oder mit Umschalt gelten nach ihrem Platz und heißen wie auf einer US-Tastatur; mit Strg, Alt oder Meta nach ihrer Aufschrift.</translation>
    </message>
    <message>
        <source>Keys of the Library</source>
        <translation>Tasten der Bibliothek</translation>
    </message>
    <message>
        <source>Keys of the Viewer</source>
        <translation>Tasten des Betrachters</translation>
    </message>
    <message>
        <source>&amp;Keys...</source>
        <translation>&amp;Tasten ...</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Large files may take several minutes</source>
        <translation>Große Dateien können Minuten dauern</translation>
    </message>
    <message>
        <source>&amp;Larger Tiles</source>
        <translation>&amp;Größere Kacheln</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Letztes</translation>
    </message>
    <message>
        <source>&amp;Last Frame</source>
        <translation>&amp;Letztes Bild</translation>
    </message>
    <message>
        <source>Last Frame</source>
        <translation>Letztes Bild</translation>
    </message>
    <message>
        <source>Last TC</source>
        <translation>Letzter TC</translation>
    </message>
    <message>
        <source>Last Visited Frame</source>
        <translation>Zuletzt gesehenes Bild</translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation>&amp;Ebene</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Layer: %1</source>
        <translation>Ebene: %1</translation>
    </message>
    <message>
        <source>Layouts keep what is docked and a maximised window</source>
        <translation>Anordnungen behalten Angedocktes und das große Fenster</translation>
    </message>
    <message>
        <source>&amp;Leave It</source>
        <translation>&amp;Lassen</translation>
    </message>
    <message>
        <source>&amp;Leave Text or Full Screen</source>
        <translation>Text oder Vollbild ver&amp;lassen</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Link Anyway</source>
        <translation>Trotzdem zuordnen</translation>
    </message>
    <message>
        <source>Link Audio File</source>
        <translation>Audiodatei zuordnen</translation>
    </message>
    <message>
        <source>&amp;Link Audio File...</source>
        <translation>Audiodatei &amp;zuordnen ...</translation>
    </message>
    <message>
        <source>Link Audio File...</source>
        <translation>Audiodatei zuordnen ...</translation>
    </message>
    <message>
        <source>Link Video File</source>
        <translation>Videodatei zuordnen</translation>
    </message>
    <message>
        <source>&amp;Link Video File...</source>
        <translation>&amp;Videodatei zuordnen ...</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>Look</translation>
    </message>
    <message>
        <source>Look at Higher &amp;Gamma</source>
        <translation>Mit höherem &amp;Gamma ansehen</translation>
    </message>
    <message>
        <source>Look at It as It &amp;Is</source>
        <translation>Ansehen, wie es &amp;ist</translation>
    </message>
    <message>
        <source>Look at It as It Is</source>
        <translation>Ansehen, wie es ist</translation>
    </message>
    <message>
        <source>Look at L&amp;ower Gamma</source>
        <translation>Mit &amp;niedrigerem Gamma ansehen</translation>
    </message>
    <message>
        <source>Look &amp;Brighter</source>
        <translation>&amp;Heller ansehen</translation>
    </message>
    <message>
        <source>Look &amp;Darker</source>
        <translation>&amp;Dunkler ansehen</translation>
    </message>
    <message>
        <source>Look for New Pictures</source>
        <translation>Nach neuen Bildern sehen</translation>
    </message>
    <message>
        <source>Looking at exposure %1%2</source>
        <translation>Angesehen mit Belichtung %1%2</translation>
    </message>
    <message>
        <source>looking at gamma %1</source>
        <translation>angesehen mit Gamma %1</translation>
    </message>
    <message>
        <source>Looking for Media Files...</source>
        <translation>Mediendateien werden gesucht ...</translation>
    </message>
    <message>
        <source>&amp;Loop Bookmark</source>
        <translation>In S&amp;chleife spielen</translation>
    </message>
    <message>
        <source>Loop Bookmark</source>
        <translation>Lesezeichen in Schleife</translation>
    </message>
    <message>
        <source>Loop Movie</source>
        <translation>Clip in Schleife</translation>
    </message>
    <message>
        <source>Loop Playlist</source>
        <translation>Playlist in Schleife</translation>
    </message>
    <message>
        <source>Lower edge</source>
        <translation>Unterer Rand</translation>
    </message>
    <message>
        <source>Manifest</source>
        <translation>Manifest</translation>
    </message>
    <message>
        <source>Mark &amp;In</source>
        <translation>&amp;In setzen</translation>
    </message>
    <message>
        <source>Mark Missing Files of &amp;All Playlists</source>
        <translation>Fehlende Dateien &amp;aller Playlists markieren</translation>
    </message>
    <message>
        <source>&amp;Mark Missing Files of Playlist</source>
        <translation>Fehlende Dateien der Playlist &amp;markieren</translation>
    </message>
    <message>
        <source>Mark &amp;Out</source>
        <translation>&amp;Out setzen</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Kasch</translation>
    </message>
    <message>
        <source>Mask opacity</source>
        <translation>Deckkraft des Kaschs</translation>
    </message>
    <message>
        <source>Mask &amp;Ratio</source>
        <translation>Kasch-Ve&amp;rhältnis</translation>
    </message>
    <message>
        <source>Mask ratio</source>
        <translation>Kasch-Verhältnis</translation>
    </message>
    <message>
        <source>Mask Ratio: %1</source>
        <translation>Kasch-Verhältnis: %1</translation>
    </message>
    <message>
        <source>matching file has been relinked.</source>
        <translation>passende Datei wurde zugeordnet.</translation>
    </message>
    <message>
        <source>matching files have been relinked.</source>
        <translation>passende Dateien wurden zugeordnet.</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Medien</translation>
    </message>
    <message>
        <source>Media file</source>
        <translation>Mediendatei</translation>
    </message>
    <message>
        <source>Media Files</source>
        <translation>Mediendateien</translation>
    </message>
    <message>
        <source>Media for</source>
        <translation>Medien für</translation>
    </message>
    <message>
        <source>Memory for pictures</source>
        <translation>Speicher für Bilder</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Middle Frame</source>
        <translation>Mittleres Bild</translation>
    </message>
    <message>
        <source>&amp;Minimise</source>
        <translation>&amp;Minimieren</translation>
    </message>
    <message>
        <source>Minimise Window</source>
        <translation>Fenster minimieren</translation>
    </message>
    <message>
        <source>Missing</source>
        <translation>Fehlend</translation>
    </message>
    <message>
        <source>&amp;Missing Media</source>
        <translation>&amp;Fehlende Medien</translation>
    </message>
    <message>
        <source>Missing pictures of runs</source>
        <translation>Fehlende Bilder von Serien</translation>
    </message>
    <message>
        <source>More Controls</source>
        <translation>Weitere Bedienung</translation>
    </message>
    <message>
        <source>More Filters</source>
        <translation>Weitere Filter</translation>
    </message>
    <message>
        <source>More Keys</source>
        <translation>Weitere Tasten</translation>
    </message>
    <message>
        <source>Mouse</source>
        <translation>Maus</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Move Items Down</source>
        <translation>Einträge nach unten</translation>
    </message>
    <message>
        <source>Move Items Up</source>
        <translation>Einträge nach oben</translation>
    </message>
    <message>
        <source>Move Playlist Down</source>
        <translation>Playlist nach unten</translation>
    </message>
    <message>
        <source>Move Playlist Up</source>
        <translation>Playlist nach oben</translation>
    </message>
    <message>
        <source>Move the zoomed picture</source>
        <translation>Vergrößertes Bild verschieben</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>&amp;Movie</source>
        <translation>&amp;Clip</translation>
    </message>
    <message>
        <source>Movie</source>
        <translation>Clip</translation>
    </message>
    <message>
        <source>Movie of a bundle</source>
        <translation>Clip eines Bündels</translation>
    </message>
    <message>
        <source>Movies start at</source>
        <translation>Clips beginnen bei</translation>
    </message>
    <message>
        <source>Mute All Bookmarks</source>
        <translation>Alle Lesezeichen stumm</translation>
    </message>
    <message>
        <source>Mute Bookmark</source>
        <translation>Lesezeichen stumm</translation>
    </message>
    <message>
        <source>Mute Bookmarks</source>
        <translation>Lesezeichen stumm</translation>
    </message>
    <message>
        <source>Muted</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>muted</source>
        <translation>stumm</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>&amp;Narrower Tool</source>
        <translation>&amp;Schmaleres Werkzeug</translation>
    </message>
    <message>
        <source>New bookmarks last</source>
        <translation>Neue Lesezeichen dauern</translation>
    </message>
    <message>
        <source>New bookmarks last, frames</source>
        <translation>Neue Lesezeichen, Bilder</translation>
    </message>
    <message>
        <source>New Da&amp;ted Divider</source>
        <translation>Trennlinie mit &amp;Datum</translation>
    </message>
    <message>
        <source>New &amp;Divider</source>
        <translation>Neue &amp;Trennlinie</translation>
    </message>
    <message>
        <source>New &amp;Folder List...</source>
        <translation>Neue &amp;Ordnerliste ...</translation>
    </message>
    <message>
        <source>New &amp;Playlist</source>
        <translation>Neue &amp;Playlist</translation>
    </message>
    <message>
        <source>New Playlist With &amp;Copies of Found Items</source>
        <translation>Neue Playlist mit &amp;Kopien der Funde</translation>
    </message>
    <message>
        <source>New playlist with copies of what is found; with Ctrl, Alt or Meta held: with instances</source>
        <translation>Neue Playlist mit Kopien der Funde; mit Strg, Alt oder Meta: mit Instanzen</translation>
    </message>
    <message>
        <source>New Playlist With &amp;Instances of Found Items</source>
        <translation>Neue Playlist mit &amp;Instanzen der Funde</translation>
    </message>
    <message>
        <source>New playlist with what is found</source>
        <translation>Neue Playlist mit den Funden</translation>
    </message>
    <message>
        <source>New playlist, smartlist, folder list or divider</source>
        <translation>Neue Playlist, Smartlist, Ordnerliste oder Trennlinie</translation>
    </message>
    <message>
        <source>New &amp;Smartlist</source>
        <translation>Neue &amp;Smartlist</translation>
    </message>
    <message>
        <source>&amp;Next Bookmark</source>
        <translation>&amp;Nächstes Lesezeichen</translation>
    </message>
    <message>
        <source>&amp;Next Frame</source>
        <translation>&amp;Nächstes Bild</translation>
    </message>
    <message>
        <source>&amp;Next Movie</source>
        <translation>&amp;Nächster Clip</translation>
    </message>
    <message>
        <source>Next or previous bookmark</source>
        <translation>Nächstes oder voriges Lesezeichen</translation>
    </message>
    <message>
        <source>Next or previous frame</source>
        <translation>Nächstes oder voriges Bild</translation>
    </message>
    <message>
        <source>Ne&amp;xt Scope</source>
        <translation>Nä&amp;chstes Scope</translation>
    </message>
    <message>
        <source>No BMs</source>
        <translation>Ohne LZ</translation>
    </message>
    <message>
        <source>No bookmark at this frame, and none is selected</source>
        <translation>Kein Lesezeichen an diesem Bild, und keines ist gewählt</translation>
    </message>
    <message>
        <source>No bookmark at this frame, and none is selected (%1 adds one)</source>
        <translation>Kein Lesezeichen an diesem Bild, und keines ist gewählt (%1 setzt eines)</translation>
    </message>
    <message>
        <source>No bookmark is selected</source>
        <translation>Kein Lesezeichen ist gewählt</translation>
    </message>
    <message>
        <source>No CCs</source>
        <translation>Ohne FK</translation>
    </message>
    <message>
        <source>No command or key is called so.</source>
        <translation>Kein Befehl und keine Taste heißt so.</translation>
    </message>
    <message>
        <source>No Drawings</source>
        <translation>Ohne Zeichnungen</translation>
    </message>
    <message>
        <source>No duplicates found</source>
        <translation>Keine Dubletten gefunden</translation>
    </message>
    <message>
        <source>No Files Are Missing</source>
        <translation>Keine Dateien fehlen</translation>
    </message>
    <message>
        <source>No Files Found</source>
        <translation>Keine Dateien gefunden</translation>
    </message>
    <message>
        <source>No Flag</source>
        <translation>Keine Flagge</translation>
    </message>
    <message>
        <source>No item answers the rules of this smartlist</source>
        <translation>Kein Eintrag entspricht den Regeln dieser Smartlist</translation>
    </message>
    <message>
        <source>No item selected</source>
        <translation>Kein Eintrag gewählt</translation>
    </message>
    <message>
        <source>&amp;No Key</source>
        <translation>&amp;Keine Taste</translation>
    </message>
    <message>
        <source>No Matches Found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>No matching files were found in this location.</source>
        <translation>Hier wurden keine passenden Dateien gefunden.</translation>
    </message>
    <message>
        <source>No media in this folder</source>
        <translation>Keine Medien in diesem Ordner</translation>
    </message>
    <message>
        <source>No movies found to export</source>
        <translation>Keine Clips zu exportieren</translation>
    </message>
    <message>
        <source>No Notes</source>
        <translation>Ohne Notizen</translation>
    </message>
    <message>
        <source>No picture in this folder has such a name.</source>
        <translation>Kein Bild in diesem Ordner heißt so.</translation>
    </message>
    <message>
        <source>No saved layout</source>
        <translation>Keine gesicherte Anordnung</translation>
    </message>
    <message>
        <source>No sound</source>
        <translation>Kein Ton</translation>
    </message>
    <message>
        <source>No such frame in this movie</source>
        <translation>Dieses Bild gibt es im Clip nicht</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Not found on this machine:</source>
        <translation>Auf diesem Rechner nicht gefunden:</translation>
    </message>
    <message>
        <source>Not Missing</source>
        <translation>Vorhanden</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>&amp;Notes</source>
        <translation>&amp;Notizen</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>of these hold:</source>
        <translation>davon gelten:</translation>
    </message>
    <message>
        <source>Off again at every start</source>
        <translation>Bei jedem Start wieder aus</translation>
    </message>
    <message>
        <source>Okay</source>
        <translation>Okay</translation>
    </message>
    <message>
        <source>on</source>
        <translation>am</translation>
    </message>
    <message>
        <source>On again at every start</source>
        <translation>Bei jedem Start wieder an</translation>
    </message>
    <message>
        <source>One Shot</source>
        <translation>Einmal</translation>
    </message>
    <message>
        <source>Only When Paused</source>
        <translation>Nur im Stand</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Opacity of the tool</source>
        <translation>Deckkraft des Werkzeugs</translation>
    </message>
    <message>
        <source>Open files from the desktop in the viewer</source>
        <translation>Dateien vom Desktop im Betrachter öffnen</translation>
    </message>
    <message>
        <source>&amp;Open in Viewer</source>
        <translation>Im Betrachter ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Open Link</source>
        <translation>Link öffnen</translation>
    </message>
    <message>
        <source>Open the previous session at start</source>
        <translation>Beim Start die letzte Sitzung öffnen</translation>
    </message>
    <message>
        <source>Open the viewer's windows as they were</source>
        <translation>Fenster des Betrachters wie zuletzt öffnen</translation>
    </message>
    <message>
        <source>OpenGL</source>
        <translation>OpenGL</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Order of Bookmarks</source>
        <translation>Reihenfolge der Lesezeichen</translation>
    </message>
    <message>
        <source>Order of Items</source>
        <translation>Reihenfolge der Einträge</translation>
    </message>
    <message>
        <source>Order of Playlists</source>
        <translation>Reihenfolge der Playlists</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Herkunft</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Andere …</translation>
    </message>
    <message>
        <source>Over the picture</source>
        <translation>Über dem Bild</translation>
    </message>
    <message>
        <source>Own name</source>
        <translation>Eigener Name</translation>
    </message>
    <message>
        <source>Pa&amp;nels</source>
        <translation>&amp;Felder</translation>
    </message>
    <message>
        <source>Panels</source>
        <translation>Felder</translation>
    </message>
    <message>
        <source>Panels come back when it is left</source>
        <translation>Felder kommen danach zurück</translation>
    </message>
    <message>
        <source>Paste &amp;Bookmarks</source>
        <translation>Lesezeichen ein&amp;fügen</translation>
    </message>
    <message>
        <source>Paste Bookmarks</source>
        <translation>Lesezeichen einfügen</translation>
    </message>
    <message>
        <source>&amp;Paste Grade</source>
        <translation>Grading &amp;einfügen</translation>
    </message>
    <message>
        <source>Paste Grade onto &amp;All Movies</source>
        <translation>Grading in &amp;alle Clips einfügen</translation>
    </message>
    <message>
        <source>Paste Link</source>
        <translation>Link einfügen</translation>
    </message>
    <message>
        <source>Paste Link: Add Its Media</source>
        <translation>Link einfügen: seine Medien hinzufügen</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>P&amp;ause</source>
        <translation>P&amp;ause</translation>
    </message>
    <message>
        <source>P&amp;icture</source>
        <translation>B&amp;ild</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Picture Size</source>
        <translation>Bildgröße</translation>
    </message>
    <message>
        <source>Picture, %1 bit</source>
        <translation>Bild, %1 Bit</translation>
    </message>
    <message>
        <source>Pictures Not Readable</source>
        <translation>Bilder nicht lesbar</translation>
    </message>
    <message>
        <source>Ping-Pong</source>
        <translation>Hin und her</translation>
    </message>
    <message>
        <source>Pixel &amp;Aspect</source>
        <translation>Pixel&amp;seitenverhältnis</translation>
    </message>
    <message>
        <source>Pixel Aspect: %1</source>
        <translation>Pixelseitenverhältnis: %1</translation>
    </message>
    <message>
        <source>P&amp;ixel Read-Out</source>
        <translation>P&amp;ixelwerte</translation>
    </message>
    <message>
        <source>Pixel read-out</source>
        <translation>Pixelwerte</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Pixel</translation>
    </message>
    <message>
        <source>Play &amp;Backwards</source>
        <translation>&amp;Rückwärts spielen</translation>
    </message>
    <message>
        <source>Play &amp;Forwards</source>
        <translation>&amp;Vorwärts spielen</translation>
    </message>
    <message>
        <source>Play Movie Once</source>
        <translation>Clip einmal</translation>
    </message>
    <message>
        <source>Play Playlist Once</source>
        <translation>Playlist einmal</translation>
    </message>
    <message>
        <source>Play when the viewer opens</source>
        <translation>Beim Öffnen abspielen</translation>
    </message>
    <message>
        <source>&amp;Play/Pause</source>
        <translation>&amp;Wiedergabe/Pause</translation>
    </message>
    <message>
        <source>&amp;Playback</source>
        <translation>&amp;Wiedergabe</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Play&amp;back Controls</source>
        <translation>Wieder&amp;gabe</translation>
    </message>
    <message>
        <source>Playback Controls</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Playback range: frames %1 to %2</source>
        <translation>Bereich: Bilder %1 bis %2</translation>
    </message>
    <message>
        <source>Playback &amp;Statistics</source>
        <translation>Wiedergabe-&amp;Statistik</translation>
    </message>
    <message>
        <source>&amp;Playlist</source>
        <translation>&amp;Playlist</translation>
    </message>
    <message>
        <source>Playlist</source>
        <translation>Playlist</translation>
    </message>
    <message>
        <source>Playlist at the right edge</source>
        <translation>Playlist am rechten Rand</translation>
    </message>
    <message>
        <source>Playlist name</source>
        <translation>Name der Playlist</translation>
    </message>
    <message>
        <source>Playlist of Found Items</source>
        <translation>Playlist der Funde</translation>
    </message>
    <message>
        <source>Playlists</source>
        <translation>Playlists</translation>
    </message>
    <message>
        <source>Plays at the movie's own rate</source>
        <translation>Spielt im Tempo des Clips</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Pre&amp;ferences...</source>
        <translation>&amp;Einstellungen ...</translation>
    </message>
    <message>
        <source>Press a further key for the command</source>
        <translation>Eine weitere Taste für den Befehl drücken</translation>
    </message>
    <message>
        <source>Press a further key for “%1”. Esc: leave it.</source>
        <translation>Weitere Taste für „%1“ drücken. Esc: lassen.</translation>
    </message>
    <message>
        <source>Press another key instead of the command's own</source>
        <translation>Statt der Taste des Befehls eine andere drücken</translation>
    </message>
    <message>
        <source>Press the key that “%1” is to have. Esc: leave it.</source>
        <translation>Taste für „%1“ drücken. Esc: lassen.</translation>
    </message>
    <message>
        <source>&amp;Previous Bookmark</source>
        <translation>&amp;Voriges Lesezeichen</translation>
    </message>
    <message>
        <source>P&amp;revious Frame</source>
        <translation>Vo&amp;riges Bild</translation>
    </message>
    <message>
        <source>&amp;Previous Movie</source>
        <translation>&amp;Voriger Clip</translation>
    </message>
    <message>
        <source>Prod</source>
        <translation>Prod</translation>
    </message>
    <message>
        <source>Prod %1</source>
        <translation>Prod %1</translation>
    </message>
    <message>
        <source>Prod %1 to %2, %3, a timecode, +8, -8</source>
        <translation>Prod %1 bis %2, %3, ein Timecode, +8, -8</translation>
    </message>
    <message>
        <source>Prod First</source>
        <translation>Prod Erstes</translation>
    </message>
    <message>
        <source>Prod frames</source>
        <translation>Prod-Bilder</translation>
    </message>
    <message>
        <source>Prod Last</source>
        <translation>Prod Letztes</translation>
    </message>
    <message>
        <source>Production number of the first frame</source>
        <translation>Produktionsnummer des ersten Bilds</translation>
    </message>
    <message>
        <source>Production number where nobody gave one</source>
        <translation>Produktionsnummer, wo keine gegeben ist</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Quality</source>
        <translation>Qualität</translation>
    </message>
    <message>
        <source>Quarter Window Size</source>
        <translation>Viertel des Fensters</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Range</source>
        <translation>Be&amp;reich</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Range of the Run</source>
        <translation>Bereich der Serie</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>Rate      %1</source>
        <translation>Rate      %1</translation>
    </message>
    <message>
        <source>Recent Sessio&amp;ns</source>
        <translation>Letzte &amp;Sitzungen</translation>
    </message>
    <message>
        <source>Recreate &amp;All Thumbnails</source>
        <translation>&amp;Alle Vorschaubilder erneuern</translation>
    </message>
    <message>
        <source>Recreate &amp;Missing Thumbnails</source>
        <translation>&amp;Fehlende Vorschaubilder erneuern</translation>
    </message>
    <message>
        <source>Recreate &amp;Selected Thumbnails</source>
        <translation>Vorschau der &amp;gewählten erneuern</translation>
    </message>
    <message>
        <source>Recreate the thumbnails of all items: %1</source>
        <translation>Alle Vorschaubilder erneuern: %1</translation>
    </message>
    <message>
        <source>Recreate the thumbnails of the selected items: %1</source>
        <translation>Vorschaubilder der gewählten Einträge erneuern: %1</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Redo %1</source>
        <translation>Wiederholen: %1</translation>
    </message>
    <message>
        <source>Relink</source>
        <translation>Neu zuordnen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove %1 Items</source>
        <translation>%1 Einträge entfernen</translation>
    </message>
    <message>
        <source>Remove A&amp;ctive Bookmarks</source>
        <translation>&amp;Aktive Lesezeichen entfernen</translation>
    </message>
    <message>
        <source>Remove All Bookmarks</source>
        <translation>Alle Lesezeichen entfernen</translation>
    </message>
    <message>
        <source>Remove All Bookmarks From Movie?</source>
        <translation>Alle Lesezeichen des Clips entfernen?</translation>
    </message>
    <message>
        <source>Remove A&amp;ll Bookmarks...</source>
        <translation>Alle Lesezeichen &amp;entfernen ...</translation>
    </message>
    <message>
        <source>Remove All Drawings</source>
        <translation>Alle Zeichnungen entfernen</translation>
    </message>
    <message>
        <source>Remove &amp;All Drawings From Movie...</source>
        <translation>&amp;Alle Zeichnungen des Clips entfernen ...</translation>
    </message>
    <message>
        <source>Remove All Drawings From Movie?</source>
        <translation>Alle Zeichnungen des Clips entfernen?</translation>
    </message>
    <message>
        <source>Remove All Duplicates</source>
        <translation>Alle Dubletten entfernen</translation>
    </message>
    <message>
        <source>Remove all media?</source>
        <translation>Alle Medien entfernen?</translation>
    </message>
    <message>
        <source>Re&amp;move Audio</source>
        <translation>Ton &amp;entfernen</translation>
    </message>
    <message>
        <source>Remove Audio</source>
        <translation>Ton entfernen</translation>
    </message>
    <message>
        <source>Re&amp;move Bookmark</source>
        <translation>Lesezeichen ent&amp;fernen</translation>
    </message>
    <message>
        <source>Remove Bookmark</source>
        <translation>Lesezeichen entfernen</translation>
    </message>
    <message>
        <source>Remove Bookmarks</source>
        <translation>Lesezeichen entfernen</translation>
    </message>
    <message>
        <source>Remove &amp;Current Drawings</source>
        <translation>&amp;Gezeigte Zeichnungen entfernen</translation>
    </message>
    <message>
        <source>Remove Drawings</source>
        <translation>Zeichnungen entfernen</translation>
    </message>
    <message>
        <source>Remove Duplicates</source>
        <translation>Dubletten entfernen</translation>
    </message>
    <message>
        <source>Remove Dup&amp;licates...</source>
        <translation>Dub&amp;letten entfernen ...</translation>
    </message>
    <message>
        <source>Remove Empty Playlists</source>
        <translation>Leere Playlists entfernen</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Eintrag entfernen</translation>
    </message>
    <message>
        <source>&amp;Remove Items</source>
        <translation>Einträge entfe&amp;rnen</translation>
    </message>
    <message>
        <source>Remove Items</source>
        <translation>Einträge entfernen</translation>
    </message>
    <message>
        <source>Remove &amp;Latest Stroke</source>
        <translation>&amp;Letzten Strich entfernen</translation>
    </message>
    <message>
        <source>Remove Movie</source>
        <translation>Clip entfernen</translation>
    </message>
    <message>
        <source>Remove Movies</source>
        <translation>Clips entfernen</translation>
    </message>
    <message>
        <source>Remove Pla&amp;ylist</source>
        <translation>Pla&amp;ylist entfernen</translation>
    </message>
    <message>
        <source>Remove Playlist</source>
        <translation>Playlist entfernen</translation>
    </message>
    <message>
        <source>Remove Playlist Without Question</source>
        <translation>Playlist ohne Frage entfernen</translation>
    </message>
    <message>
        <source>Remove Playlists</source>
        <translation>Playlists entfernen</translation>
    </message>
    <message>
        <source>Remove Selected Movie?</source>
        <translation>Gewählten Clip entfernen?</translation>
    </message>
    <message>
        <source>Remove Selected Movies?</source>
        <translation>Gewählte Clips entfernen?</translation>
    </message>
    <message>
        <source>Remove Selected Playlist?</source>
        <translation>Gewählte Playlist entfernen?</translation>
    </message>
    <message>
        <source>Remove Selected Playlists?</source>
        <translation>Gewählte Playlists entfernen?</translation>
    </message>
    <message>
        <source>&amp;Remove Sorting</source>
        <translation>Sortie&amp;rung aufheben</translation>
    </message>
    <message>
        <source>Remove Stroke</source>
        <translation>Strich entfernen</translation>
    </message>
    <message>
        <source>Remove this rule</source>
        <translation>Diese Regel entfernen</translation>
    </message>
    <message>
        <source>Re&amp;name Playlist</source>
        <translation>Playlist um&amp;benennen</translation>
    </message>
    <message>
        <source>Rename Playlist</source>
        <translation>Playlist umbenennen</translation>
    </message>
    <message>
        <source>Renderer  %1</source>
        <translation>Renderer  %1</translation>
    </message>
    <message>
        <source>R&amp;epeat</source>
        <translation>Wi&amp;ederholen</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Repeat: %1</source>
        <translation>Wiederholen: %1</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Replace "%1"?</source>
        <translation>„%1“ ersetzen?</translation>
    </message>
    <message>
        <source>Replace Current Session?</source>
        <translation>Jetzige Sitzung ersetzen?</translation>
    </message>
    <message>
        <source>Replace Session</source>
        <translation>Sitzung ersetzen</translation>
    </message>
    <message>
        <source>Replacing it will overwrite what it holds.</source>
        <translation>Ersetzen überschreibt, was sie enthält.</translation>
    </message>
    <message>
        <source>Rese&amp;t</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Reset %1</source>
        <translation>%1 zurücksetzen</translation>
    </message>
    <message>
        <source>Reset All &amp;Keys</source>
        <translation>Alle &amp;Tasten zurück</translation>
    </message>
    <message>
        <source>&amp;Reset All Preferences</source>
        <translation>Alle &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Reset Grade</source>
        <translation>Grading zu&amp;rücksetzen</translation>
    </message>
    <message>
        <source>&amp;Reset Handles</source>
        <translation>Handles &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Restore Panel Layout &amp;1</source>
        <translation>Anordnung &amp;1 herstellen</translation>
    </message>
    <message>
        <source>Restore Panel Layout &amp;2</source>
        <translation>Anordnung &amp;2 herstellen</translation>
    </message>
    <message>
        <source>&amp;Reveal in File Browser</source>
        <translation>Im Dateimanager &amp;zeigen</translation>
    </message>
    <message>
        <source>Re&amp;veal in File Browser</source>
        <translation>Im Dateimanager &amp;zeigen</translation>
    </message>
    <message>
        <source>Revert Audio</source>
        <translation>Originalton zurück</translation>
    </message>
    <message>
        <source>&amp;Revert to Original Audio</source>
        <translation>Zum O&amp;riginalton</translation>
    </message>
    <message>
        <source>RGB</source>
        <translation>RGB</translation>
    </message>
    <message>
        <source>RGB Parade</source>
        <translation>RGB-Parade</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Rules of %1</source>
        <translation>Regeln von %1</translation>
    </message>
    <message>
        <source>Rules of Smartlist</source>
        <translation>Regeln der Smartlist</translation>
    </message>
    <message>
        <source>Same As Source</source>
        <translation>Wie die Quelle</translation>
    </message>
    <message>
        <source>Same As Window</source>
        <translation>Wie das Fenster</translation>
    </message>
    <message>
        <source>Same Frame</source>
        <translation>Dasselbe Bild</translation>
    </message>
    <message>
        <source>Saturation</source>
        <translation>Sättigung</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Sichern</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Save As Layout 1</source>
        <translation>Als Anordnung 1</translation>
    </message>
    <message>
        <source>Save As Layout 2</source>
        <translation>Als Anordnung 2</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Sichern als ...</translation>
    </message>
    <message>
        <source>Save As…</source>
        <translation>Sichern als …</translation>
    </message>
    <message>
        <source>Save Audio</source>
        <translation>Ton sichern</translation>
    </message>
    <message>
        <source>&amp;Save Audio As...</source>
        <translation>Ton &amp;sichern als ...</translation>
    </message>
    <message>
        <source>Save Audio As...</source>
        <translation>Ton sichern als ...</translation>
    </message>
    <message>
        <source>Save Current Panel Layout?</source>
        <translation>Jetzige Anordnung sichern?</translation>
    </message>
    <message>
        <source>Save Mo&amp;vie As...</source>
        <translation>&amp;Clip sichern als ...</translation>
    </message>
    <message>
        <source>Save Movie As...</source>
        <translation>Clip sichern als ...</translation>
    </message>
    <message>
        <source>Sa&amp;ve Panel Layout...</source>
        <translation>Anord&amp;nung sichern ...</translation>
    </message>
    <message>
        <source>Save Playlist As...</source>
        <translation>Playlist sichern als ...</translation>
    </message>
    <message>
        <source>Save Session</source>
        <translation>Sitzung sichern</translation>
    </message>
    <message>
        <source>Save Session &amp;As...</source>
        <translation>Sitzung sichern &amp;als ...</translation>
    </message>
    <message>
        <source>Save Snapshot</source>
        <translation>Standbild sichern</translation>
    </message>
    <message>
        <source>Save Snapshot As...</source>
        <translation>Standbild sichern als ...</translation>
    </message>
    <message>
        <source>Saving Audio</source>
        <translation>Ton wird gesichert</translation>
    </message>
    <message>
        <source>Saving Movie</source>
        <translation>Clip wird gesichert</translation>
    </message>
    <message>
        <source>Say in empty lists what can be dropped there</source>
        <translation>In leeren Listen sagen, was hineingehört</translation>
    </message>
    <message>
        <source>Say in passing that handles are longer than a movie shown</source>
        <translation>Nebenbei sagen, dass Handles länger sind als der Clip</translation>
    </message>
    <message>
        <source>Say when many items were changed at once</source>
        <translation>Sagen, wenn viele Einträge geändert wurden</translation>
    </message>
    <message>
        <source>Scope</source>
        <translation>Scope</translation>
    </message>
    <message>
        <source>Scope: %1</source>
        <translation>Scope: %1</translation>
    </message>
    <message>
        <source>Scop&amp;es</source>
        <translation>Scop&amp;es</translation>
    </message>
    <message>
        <source>Scopes</source>
        <translation>Scopes</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search Automaticall&amp;y</source>
        <translation>&amp;Automatisch suchen</translation>
    </message>
    <message>
        <source>Search Automatically for Missing Media</source>
        <translation>Fehlende Medien automatisch suchen</translation>
    </message>
    <message>
        <source>Search Filenames</source>
        <translation>Dateinamen</translation>
    </message>
    <message>
        <source>Search Filepaths &amp; Names</source>
        <translation>Pfade und Namen</translation>
    </message>
    <message>
        <source>Search Folder</source>
        <translation>Ordner durchsuchen</translation>
    </message>
    <message>
        <source>Search for missing media automatically</source>
        <translation>Fehlende Medien automatisch suchen</translation>
    </message>
    <message>
        <source>Search &amp;Items</source>
        <translation>Einträge s&amp;uchen</translation>
    </message>
    <message>
        <source>Search &amp;Now</source>
        <translation>&amp;Jetzt suchen</translation>
    </message>
    <message>
        <source>Search Now for Missing Media</source>
        <translation>Fehlende Medien jetzt suchen</translation>
    </message>
    <message>
        <source>Search the Items' Paths</source>
        <translation>In den Pfaden suchen</translation>
    </message>
    <message>
        <source>Search the items' paths</source>
        <translation>In den Pfaden der Einträge suchen</translation>
    </message>
    <message>
        <source>Search under</source>
        <translation>Suchen in</translation>
    </message>
    <message>
        <source>Searching for Media Files...</source>
        <translation>Mediendateien werden gesucht ...</translation>
    </message>
    <message>
        <source>Second Frame</source>
        <translation>Zweites Bild</translation>
    </message>
    <message>
        <source>Second Notes</source>
        <translation>Zweite Notizen</translation>
    </message>
    <message>
        <source>Second notes are called</source>
        <translation>Die zweiten Notizen heißen</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <source>Select A Folder To Search</source>
        <translation>Ordner zum Durchsuchen wählen</translation>
    </message>
    <message>
        <source>Select a movie and try again</source>
        <translation>Einen Clip wählen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select More Than One Playlist</source>
        <translation>Mehr als eine Playlist wählen</translation>
    </message>
    <message>
        <source>Select one and try again</source>
        <translation>Eine wählen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>Select one item and try again</source>
        <translation>Einen Eintrag wählen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>Select only one and try again</source>
        <translation>Nur eine wählen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>Session</source>
        <translation>Sitzung</translation>
    </message>
    <message>
        <source>Session of this run</source>
        <translation>Sitzung dieses Laufs</translation>
    </message>
    <message>
        <source>Set First Frame to Frame on Screen</source>
        <translation>Erstes Bild auf das gezeigte setzen</translation>
    </message>
    <message>
        <source>Set Frame Counter to &amp;One</source>
        <translation>Bildzähler auf &amp;Eins setzen</translation>
    </message>
    <message>
        <source>Set Last Frame from Number of Frames</source>
        <translation>Letztes Bild aus der Bildzahl setzen</translation>
    </message>
    <message>
        <source>Set Last Frame to Frame on Screen</source>
        <translation>Letztes Bild auf das gezeigte setzen</translation>
    </message>
    <message>
        <source>Set Thumbnail Image</source>
        <translation>Dieses Bild als Vorschau</translation>
    </message>
    <message>
        <source>Set to 1</source>
        <translation>Auf 1</translation>
    </message>
    <message>
        <source>Set Width (maintains window ratio)</source>
        <translation>Breite wählen (im Verhältnis)</translation>
    </message>
    <message>
        <source>sh010.1001.exr, sh010.1002.exr, … as one item</source>
        <translation>sh010.1001.exr, sh010.1002.exr, … als ein Eintrag</translation>
    </message>
    <message>
        <source>Sharp thumbnails at every size</source>
        <translation>Scharfe Vorschaubilder in jeder Größe</translation>
    </message>
    <message>
        <source>Shift+Wheel</source>
        <translation>Umschalt+Rad</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alle zeigen</translation>
    </message>
    <message>
        <source>&amp;Show All Panels</source>
        <translation>Alle Felder &amp;zeigen</translation>
    </message>
    <message>
        <source>Show bookmark texts</source>
        <translation>Texte der Lesezeichen zeigen</translation>
    </message>
    <message>
        <source>Show drawings</source>
        <translation>Zeichnungen zeigen</translation>
    </message>
    <message>
        <source>Show file extensions</source>
        <translation>Dateiendungen zeigen</translation>
    </message>
    <message>
        <source>&amp;Show Grade</source>
        <translation>Grading &amp;zeigen</translation>
    </message>
    <message>
        <source>Show items at start</source>
        <translation>Einträge beim Start</translation>
    </message>
    <message>
        <source>Show Mask</source>
        <translation>Kasch zeigen</translation>
    </message>
    <message>
        <source>Show playback statistics</source>
        <translation>Wiedergabe-Statistik zeigen</translation>
    </message>
    <message>
        <source>Show the file name</source>
        <translation>Dateinamen zeigen</translation>
    </message>
    <message>
        <source>Show the frame counter</source>
        <translation>Bildzähler zeigen</translation>
    </message>
    <message>
        <source>Show the mask</source>
        <translation>Kasch zeigen</translation>
    </message>
    <message>
        <source>Show the timecode</source>
        <translation>Timecode zeigen</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Gezeigt</translation>
    </message>
    <message>
        <source>Shown Raw</source>
        <translation>Unverändert</translation>
    </message>
    <message>
        <source>Shows the folder %1</source>
        <translation>Zeigt den Ordner %1</translation>
    </message>
    <message>
        <source>Single keys work</source>
        <translation>Einzeltasten gelten</translation>
    </message>
    <message>
        <source>Single letters and signs go by their place on the keyboard: they are named as a US keyboard prints them.</source>
        <translation>Einzelne Buchstaben und Zeichen gelten nach ihrem Platz: Sie heißen wie auf einer US-Tastatur.</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Size (MB)</source>
        <translation>Größe (MB)</translation>
    </message>
    <message>
        <source>Size in all</source>
        <translation>Größe insgesamt</translation>
    </message>
    <message>
        <source>Slate</source>
        <translation>Tafel</translation>
    </message>
    <message>
        <source>&amp;Smaller Tiles</source>
        <translation>K&amp;leinere Kacheln</translation>
    </message>
    <message>
        <source>Smartlist</source>
        <translation>Smartlist</translation>
    </message>
    <message>
        <source>Smartlist R&amp;ules...</source>
        <translation>Smartlist-Re&amp;geln ...</translation>
    </message>
    <message>
        <source>Snapshot</source>
        <translation>Standbild</translation>
    </message>
    <message>
        <source>Snapshots</source>
        <translation>Standbilder</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Some files are missing</source>
        <translation>Einige Dateien fehlen</translation>
    </message>
    <message>
        <source>Some Files Found</source>
        <translation>Einige Dateien gefunden</translation>
    </message>
    <message>
        <source>Some items in this session were created with an older version of Daylark.

Click "Update" below to update them. Drawings in these movies will be lost.</source>
        <translation>Einige Einträge dieser Sitzung stammen aus einer älteren Version von Daylark.

„Aktualisieren“ bringt sie auf den Stand. Zeichnungen in diesen Clips gehen verloren.</translation>
    </message>
    <message>
        <source>Some media files in this link weren't found</source>
        <translation>Einige Medien dieses Links fehlen</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Sound tracks</source>
        <translation>Tonspuren</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Speed %1</source>
        <translation>Tempo %1</translation>
    </message>
    <message>
        <source>standing</source>
        <translation>steht</translation>
    </message>
    <message>
        <source>Stands in several playlists</source>
        <translation>Steht in mehreren Playlists</translation>
    </message>
    <message>
        <source>Start New Session</source>
        <translation>Neue Sitzung beginnen</translation>
    </message>
    <message>
        <source>Start timecode</source>
        <translation>Start-Timecode</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Stop Looping Bookmark</source>
        <translation>Schleife beenden</translation>
    </message>
    <message>
        <source>Stroke</source>
        <translation>Strich</translation>
    </message>
    <message>
        <source>Tail handle</source>
        <translation>Nachlauf</translation>
    </message>
    <message>
        <source>Tail handle, frames</source>
        <translation>Nachlauf, Bilder</translation>
    </message>
    <message>
        <source>&amp;Take It</source>
        <translation>&amp;Nehmen</translation>
    </message>
    <message>
        <source>Take runs of numbered pictures as movies</source>
        <translation>Nummerierte Bilderserien als Clips nehmen</translation>
    </message>
    <message>
        <source>Take S&amp;napshot...</source>
        <translation>Sta&amp;ndbild aufnehmen ...</translation>
    </message>
    <message>
        <source>Take still images as well as movies</source>
        <translation>Auch Standbilder aufnehmen</translation>
    </message>
    <message>
        <source>Take these default handles</source>
        <translation>Diese Handles nehmen</translation>
    </message>
    <message>
        <source>Take up the brush when the drawing tools open</source>
        <translation>Mit den Werkzeugen gleich den Pinsel nehmen</translation>
    </message>
    <message>
        <source>Take up the brush when they open</source>
        <translation>Gleich den Pinsel nehmen</translation>
    </message>
    <message>
        <source>Text Colour</source>
        <translation>Textfarbe</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>Textfarbe</translation>
    </message>
    <message>
        <source>That of its timecode</source>
        <translation>Die seines Timecodes</translation>
    </message>
    <message>
        <source>The audio could not be saved as "%1".</source>
        <translation>Der Ton ließ sich nicht als „%1“ sichern.</translation>
    </message>
    <message>
        <source>The colour configuration cannot be used, the picture is shown raw: %1</source>
        <translation>Die Farbkonfiguration ist unbrauchbar, das Bild erscheint roh: %1</translation>
    </message>
    <message>
        <source>The command had no key at first</source>
        <translation>Der Befehl hatte anfangs keine Taste</translation>
    </message>
    <message>
        <source>The command has no key any more</source>
        <translation>Der Befehl hat keine Taste mehr</translation>
    </message>
    <message>
        <source>The desktop's</source>
        <translation>Die des Desktops</translation>
    </message>
    <message>
        <source>The filenames don't match.  Link anyway?</source>
        <translation>Die Dateinamen stimmen nicht überein. Trotzdem zuordnen?</translation>
    </message>
    <message>
        <source>The filter hides all items of this playlist.
Escape in the search field or Show All brings them back.</source>
        <translation>Der Filter verbirgt alle Einträge dieser Playlist.
Esc im Suchfeld oder „Alle zeigen“ holt sie zurück.</translation>
    </message>
    <message>
        <source>The frame on screen counts as 1</source>
        <translation>Das gezeigte Bild zählt als 1</translation>
    </message>
    <message>
        <source>The other number</source>
        <translation>Die andere Zahl</translation>
    </message>
    <message>
        <source>The picture is drawn by</source>
        <translation>Das Bild zeichnet</translation>
    </message>
    <message>
        <source>The picture is shown raw: %1</source>
        <translation>Das Bild erscheint roh: %1</translation>
    </message>
    <message>
        <source>The pictures of this run can't be shown: %1.</source>
        <translation>Die Bilder dieser Serie lassen sich nicht zeigen: %1.</translation>
    </message>
    <message>
        <source>The range is off; once more loops the bookmark</source>
        <translation>Der Bereich ist aus; noch einmal: das Lesezeichen in Schleife</translation>
    </message>
    <message>
        <source>The session could not be written anywhere: %1.</source>
        <translation>Die Sitzung ließ sich nirgends sichern: %1.</translation>
    </message>
    <message>
        <source>The session could not be written to its own place. It lies in "%1" until you log out or the machine stops: copy it to a disk with room and import it.</source>
        <translation>Die Sitzung ließ sich nicht an ihrem Ort sichern. Sie liegt in „%1“, bis Sie sich abmelden oder der Rechner ausgeht: Kopieren Sie sie auf einen Datenträger mit Platz und importieren Sie sie.</translation>
    </message>
    <message>
        <source>The session of the last run was not restored. Saving now puts what is in the library in the place of what that file holds.</source>
        <translation>Die letzte Sitzung wurde nicht wiederhergestellt. Wer jetzt sichert, ersetzt den Inhalt dieser Datei durch das, was in der Bibliothek steht.</translation>
    </message>
    <message>
        <source>The session's colour configuration cannot be used, the picture is shown raw: %1</source>
        <translation>Die Farbkonfiguration der Sitzung ist nicht verwendbar, das Bild wird roh gezeigt: %1</translation>
    </message>
    <message>
        <source>The text was cut: it is longer than notes can take at once</source>
        <translation>Der Text wurde gekürzt: Er ist zu lang für eine Notiz</translation>
    </message>
    <message>
        <source>The usual one: $OCIO, %1</source>
        <translation>Die übliche: $OCIO, %1</translation>
    </message>
    <message>
        <source>The usual one: Daylark's own</source>
        <translation>Die übliche: Daylarks eigene</translation>
    </message>
    <message>
        <source>There Are No Missing Files</source>
        <translation>Es fehlen keine Dateien</translation>
    </message>
    <message>
        <source>There is no “%1”.</source>
        <translation>„%1“ gibt es nicht.</translation>
    </message>
    <message>
        <source>there is no other place</source>
        <translation>es gibt keinen anderen Ort</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>die Datei gibt es nicht</translation>
    </message>
    <message>
        <source>These are no two different numbers. Black and white, such as 0, 100; nothing for what the picture reaches over:</source>
        <translation>Das sind keine zwei verschiedenen Zahlen. Schwarz und Weiß, etwa 0, 100; nichts für den Umfang des Bilds:</translation>
    </message>
    <message>
        <source>This can't be undone</source>
        <translation>Das lässt sich nicht rückgängig machen</translation>
    </message>
    <message>
        <source>This file can not be read.
Please check you have correct file permissions.</source>
        <translation>Diese Datei ist nicht lesbar.
Bitte die Zugriffsrechte prüfen.</translation>
    </message>
    <message>
        <source>This file may have been renamed or deleted.</source>
        <translation>Diese Datei wurde vielleicht umbenannt oder gelöscht.</translation>
    </message>
    <message>
        <source>This session only</source>
        <translation>Nur diese Sitzung</translation>
    </message>
    <message>
        <source>This smartlist has no rules yet.
Smartlist Rules... in its menu gives it some.</source>
        <translation>Diese Smartlist hat noch keine Regeln.
„Smartlist-Regeln ...“ in ihrem Menü gibt ihr welche.</translation>
    </message>
    <message>
        <source>This text is too long to be shown: its beginning, to be read only</source>
        <translation>Dieser Text ist zu lang: nur sein Anfang, nur zum Lesen</translation>
    </message>
    <message>
        <source>&amp;Thumbnail</source>
        <translation>&amp;Vorschaubild</translation>
    </message>
    <message>
        <source>Thumbnail</source>
        <translation>Vorschaubild</translation>
    </message>
    <message>
        <source>Thumbnail: %1</source>
        <translation>Vorschaubild: %1</translation>
    </message>
    <message>
        <source>&amp;Thumbnails</source>
        <translation>&amp;Vorschaubilder</translation>
    </message>
    <message>
        <source>Thumbnails show the</source>
        <translation>Vorschaubilder zeigen</translation>
    </message>
    <message>
        <source>Tile size</source>
        <translation>Kachelgröße</translation>
    </message>
    <message>
        <source>Timecode</source>
        <translation>Timecode</translation>
    </message>
    <message>
        <source>&amp;Timecode on Picture</source>
        <translation>&amp;Timecode im Bild</translation>
    </message>
    <message>
        <source>Timecode stands</source>
        <translation>Der Timecode steht</translation>
    </message>
    <message>
        <source>Too many playlists selected</source>
        <translation>Zu viele Playlists gewählt</translation>
    </message>
    <message>
        <source>&amp;Trim Handles</source>
        <translation>Handles &amp;kürzen</translation>
    </message>
    <message>
        <source>Trim handles</source>
        <translation>Handles kürzen</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Noch einmal</translation>
    </message>
    <message>
        <source>Two numbers, such as 0, 100; nothing for what the picture reaches over:</source>
        <translation>Zwei Zahlen, etwa 0, 100; nichts für den Umfang des Bilds:</translation>
    </message>
    <message>
        <source>Underline (Ctrl+U)</source>
        <translation>Unterstrichen (Strg+U)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Undo %1</source>
        <translation>Rückgängig: %1</translation>
    </message>
    <message>
        <source>Unflagged</source>
        <translation>Ohne Flagge</translation>
    </message>
    <message>
        <source>Unmute All Bookmarks</source>
        <translation>Alle Lesezeichen wieder zeigen</translation>
    </message>
    <message>
        <source>Unmute Bookmark</source>
        <translation>Lesezeichen wieder zeigen</translation>
    </message>
    <message>
        <source>Unmute Bookmarks</source>
        <translation>Lesezeichen wieder zeigen</translation>
    </message>
    <message>
        <source>Until Daylark is closed; at the next start it is First Frame again</source>
        <translation>Bis Daylark geschlossen wird; beim nächsten Start wieder „Erstes Bild“</translation>
    </message>
    <message>
        <source>Untitled Session</source>
        <translation>Sitzung ohne Namen</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>&amp;Update File Paths</source>
        <translation>&amp;Dateipfade auffrischen</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Nehmen</translation>
    </message>
    <message>
        <source>Use "Panels &gt; Save Panel Layout" to save the current layout.</source>
        <translation>Mit „Felder &gt; Anordnung sichern“ wird die jetzige gesichert.</translation>
    </message>
    <message>
        <source>Use "Panels &gt; Save Panels Layout" to save the current layout.</source>
        <translation>Mit „Felder &gt; Anordnung sichern“ wird die jetzige gesichert.</translation>
    </message>
    <message>
        <source>User Defined</source>
        <translation>Eigener</translation>
    </message>
    <message>
        <source>Vectorscope</source>
        <translation>Vektorskop</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>View: %1</source>
        <translation>Ansicht: %1</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Betrachter</translation>
    </message>
    <message>
        <source>Viewer &amp;Options</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>Viewer Options</source>
        <translation>Optionen des Betrachters</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Volume %1 %</source>
        <translation>Lautstärke %1 %</translation>
    </message>
    <message>
        <source>Waveform</source>
        <translation>Wellenform</translation>
    </message>
    <message>
        <source>What is not written</source>
        <translation>Was nicht geschrieben ist</translation>
    </message>
    <message>
        <source>What it is compared with</source>
        <translation>Womit verglichen wird</translation>
    </message>
    <message>
        <source>what stands there is no file</source>
        <translation>was dort liegt, ist keine Datei</translation>
    </message>
    <message>
        <source>What the rule looks at</source>
        <translation>Worauf die Regel schaut</translation>
    </message>
    <message>
        <source>Whatever comes into its folder</source>
        <translation>Was auch in den Ordner kommt</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Rad</translation>
    </message>
    <message>
        <source>When drawings are shown</source>
        <translation>Wann Zeichnungen gezeigt werden</translation>
    </message>
    <message>
        <source>Where a movie starts</source>
        <translation>Wo ein Clip beginnt</translation>
    </message>
    <message>
        <source>Where neither a run's pictures nor a person say it</source>
        <translation>Wo weder Bilder einer Folge noch jemand es sagt</translation>
    </message>
    <message>
        <source>Where neither their pictures nor a person say it</source>
        <translation>Wo weder Bilder noch jemand es sagt</translation>
    </message>
    <message>
        <source>Where nobody gave one</source>
        <translation>Wo niemand eine gab</translation>
    </message>
    <message>
        <source>Where the timecode stands</source>
        <translation>Wo der Timecode steht</translation>
    </message>
    <message>
        <source>Which items are shown</source>
        <translation>Welche Einträge gezeigt werden</translation>
    </message>
    <message>
        <source>Which scope is shown</source>
        <translation>Welches Scope zu sehen ist</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>&amp;Wider Tool</source>
        <translation>&amp;Breiteres Werkzeug</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Width in pixels of the movie ([ and ])</source>
        <translation>Breite in Pixeln des Clips ([ und ])</translation>
    </message>
    <message>
        <source>Width of the tool</source>
        <translation>Breite des Werkzeugs</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>Window Size 1:1 (Actual Size)</source>
        <translation>Fenstergröße 1:1 (Originalgröße)</translation>
    </message>
    <message>
        <source>Window Size 1:2 (Half Size)</source>
        <translation>Fenstergröße 1:2 (halb)</translation>
    </message>
    <message>
        <source>Window Size 1:3 (Third Size)</source>
        <translation>Fenstergröße 1:3 (ein Drittel)</translation>
    </message>
    <message>
        <source>With Bookmarks</source>
        <translation>Mit Lesezeichen</translation>
    </message>
    <message>
        <source>With bookmarks</source>
        <translation>Mit Lesezeichen</translation>
    </message>
    <message>
        <source>With Colour Correction</source>
        <translation>Mit Farbkorrektur</translation>
    </message>
    <message>
        <source>With Drawing Tools</source>
        <translation>Mit den Werkzeugen</translation>
    </message>
    <message>
        <source>With Drawings</source>
        <translation>Mit Zeichnungen</translation>
    </message>
    <message>
        <source>With Notes</source>
        <translation>Mit Notizen</translation>
    </message>
    <message>
        <source>Without Bookmarks</source>
        <translation>Ohne Lesezeichen</translation>
    </message>
    <message>
        <source>Without Colour Correction</source>
        <translation>Ohne Farbkorrektur</translation>
    </message>
    <message>
        <source>Without Drawings</source>
        <translation>Ohne Zeichnungen</translation>
    </message>
    <message>
        <source>Without Notes</source>
        <translation>Ohne Notizen</translation>
    </message>
    <message>
        <source>Would you like to Copy or Move these items?</source>
        <translation>Diese Einträge kopieren oder verschieben?</translation>
    </message>
    <message>
        <source>Would you like to Copy these items?</source>
        <translation>Diese Einträge kopieren?</translation>
    </message>
    <message>
        <source>&amp;Write Notes</source>
        <translation>&amp;Notizen schreiben</translation>
    </message>
    <message>
        <source>x %1   y %2</source>
        <translation>x %1   y %2</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>Your last changes are not in their place</source>
        <translation>Ihre letzten Änderungen sind nicht an ihrem Ort</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoom</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Zoom at the pointer</source>
        <translation>Zoom am Zeiger</translation>
    </message>
    <message>
        <source>Zoom at the pointer by Shift and the wheel</source>
        <translation>Am Zeiger zoomen mit Umschalt und Rad</translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom: %1 % of the viewer's width</source>
        <translation>Zoom: %1 % der Breite</translation>
    </message>
    <message>
        <source>Zoom: fits the viewer</source>
        <translation>Zoom: passend</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>“%1” already exists.</source>
        <translation>„%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>“%1” gets the key; the other loses it</source>
        <translation>„%1“ bekommt die Taste, der andere Befehl verliert sie</translation>
    </message>
</context>
</TS>
