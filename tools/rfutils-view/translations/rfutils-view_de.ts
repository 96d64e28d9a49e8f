<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Commands</name>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>open a recording</source>
        <translation>Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>save the window as a picture</source>
        <translation>Fenster als Bild speichern</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>save the shown sweep as CSV</source>
        <translation>Durchlauf als CSV speichern</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>end the program</source>
        <translation>Programm beenden</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>pause and go on</source>
        <translation>anhalten und weiter</translation>
    </message>
    <message>
        <source>scroll the waterfall back</source>
        <translation>Wasserfall zurück</translation>
    </message>
    <message>
        <source>scroll the waterfall forth</source>
        <translation>Wasserfall vor</translation>
    </message>
    <message>
        <source>Newest</source>
        <translation>Neueste</translation>
    </message>
    <message>
        <source>back to the newest sweep</source>
        <translation>zum neuesten Durchlauf</translation>
    </message>
    <message>
        <source>a twentieth of the recording back</source>
        <translation>ein Zwanzigstel zurück</translation>
    </message>
    <message>
        <source>a twentieth of the recording forth</source>
        <translation>ein Zwanzigstel vor</translation>
    </message>
    <message>
        <source>read the recording from its start</source>
        <translation>von vorn lesen</translation>
    </message>
    <message>
        <source>Traces</source>
        <translation>Kurven</translation>
    </message>
    <message>
        <source>Sweep</source>
        <translation>Aktuell</translation>
    </message>
    <message>
        <source>show the newest sweep</source>
        <translation>aktuellen Durchlauf zeigen</translation>
    </message>
    <message>
        <source>Max</source>
        <translation>Max</translation>
    </message>
    <message>
        <source>show the maximum hold</source>
        <translation>Maximum zeigen</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>Min</translation>
    </message>
    <message>
        <source>show the minimum hold</source>
        <translation>Minimum zeigen</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>show the average</source>
        <translation>Mittel zeigen</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>fill between maximum and minimum</source>
        <translation>zwischen Maximum und Minimum füllen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>start maximum and minimum again</source>
        <translation>Maximum und Minimum neu beginnen</translation>
    </message>
    <message>
        <source>next unit</source>
        <translation>nächste Einheit</translation>
    </message>
    <message>
        <source>former unit</source>
        <translation>vorige Einheit</translation>
    </message>
    <message>
        <source>Auto levels</source>
        <translation>Pegel auto</translation>
    </message>
    <message>
        <source>automatic axis of levels</source>
        <translation>Pegelachse automatisch</translation>
    </message>
    <message>
        <source>Markers</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Peak</source>
        <translation>Spitze</translation>
    </message>
    <message>
        <source>marker to the highest level</source>
        <translation>Marker zum höchsten Pegel</translation>
    </message>
    <message>
        <source>marker to the next peak below</source>
        <translation>Marker zur nächsten Spitze darunter</translation>
    </message>
    <message>
        <source>marker to the next peak above</source>
        <translation>Marker zur nächsten Spitze darüber</translation>
    </message>
    <message>
        <source>marker one point down</source>
        <translation>Marker einen Punkt tiefer</translation>
    </message>
    <message>
        <source>marker one point up</source>
        <translation>Marker einen Punkt höher</translation>
    </message>
    <message>
        <source>marker to the lowest level</source>
        <translation>Marker zum tiefsten Pegel</translation>
    </message>
    <message>
        <source>remove the marker</source>
        <translation>Marker entfernen</translation>
    </message>
    <message>
        <source>remove all markers</source>
        <translation>alle Marker entfernen</translation>
    </message>
    <message>
        <source>bring the marker to the middle</source>
        <translation>Marker in die Mitte</translation>
    </message>
    <message>
        <source>Waterfall</source>
        <translation>Wasserfall</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>next palette</source>
        <translation>nächste Palette</translation>
    </message>
    <message>
        <source>Auto range</source>
        <translation>Farben auto</translation>
    </message>
    <message>
        <source>fit the colours to what is shown</source>
        <translation>Farben dem Bild anpassen</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Whole</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>show the whole band</source>
        <translation>ganzes Band zeigen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>show the settings</source>
        <translation>Optionen zeigen</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>show the map</source>
        <translation>Karte zeigen</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>show the table of markers</source>
        <translation>Tabelle der Marker zeigen</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Hell/Dunkel</translation>
    </message>
    <message>
        <source>light or dark</source>
        <translation>hell oder dunkel</translation>
    </message>
    <message>
        <source>fill the screen</source>
        <translation>ganzer Bildschirm</translation>
    </message>
    <message>
        <source>show this help</source>
        <translation>diese Hilfe zeigen</translation>
    </message>
    <message>
        <source>close what is open, back to the spectrum</source>
        <translation>schließen, zurück zum Spektrum</translation>
    </message>
    <message>
        <source>take marker %1</source>
        <translation>Marker %1 nehmen</translation>
    </message>
    <message>
        <source>Open map</source>
        <translation>Karte öffnen</translation>
    </message>
    <message>
        <source>open a map</source>
        <translation>Karte öffnen</translation>
    </message>
    <message>
        <source>more room for the spectrum</source>
        <translation>mehr Platz fürs Spektrum</translation>
    </message>
    <message>
        <source>more room for the waterfall</source>
        <translation>mehr Platz für den Wasserfall</translation>
    </message>
</context>
<context>
    <name>FileField</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>choose a file</source>
        <translation>Datei wählen</translation>
    </message>
    <message>
        <source>do without</source>
        <translation>entfernen</translation>
    </message>
</context>
<context>
    <name>HelpPage</name>
    <message>
        <source>wheel, pinch</source>
        <translation>Rad, zwei Finger</translation>
    </message>
    <message>
        <source>zoom at the pointer; with Ctrl faster</source>
        <translation>am Zeiger vergrößern; mit Strg schneller</translation>
    </message>
    <message>
        <source>drag</source>
        <translation>ziehen</translation>
    </message>
    <message>
        <source>move along the band</source>
        <translation>durchs Band schieben</translation>
    </message>
    <message>
        <source>double click</source>
        <translation>Doppelklick</translation>
    </message>
    <message>
        <source>show the whole band</source>
        <translation>ganzes Band zeigen</translation>
    </message>
    <message>
        <source>click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>place the active marker</source>
        <translation>aktiven Marker setzen</translation>
    </message>
    <message>
        <source>zoom</source>
        <translation>vergrößern</translation>
    </message>
    <message>
        <source>drag the bar</source>
        <translation>Balken ziehen</translation>
    </message>
    <message>
        <source>divide spectrum and waterfall</source>
        <translation>Spektrum und Wasserfall teilen</translation>
    </message>
    <message>
        <source>through buttons and fields</source>
        <translation>durch Knöpfe und Felder</translation>
    </message>
    <message>
        <source>Mouse, touch, arrows</source>
        <translation>Maus, Finger, Pfeiltasten</translation>
    </message>
    <message>
        <source>take a marker; one that is not set goes to the highest level</source>
        <translation>Marker nehmen; ein nicht gesetzter geht zum höchsten Pegel</translation>
    </message>
</context>
<context>
    <name>LevelField</name>
    <message>
        <source>automatic</source>
        <translation>automatisch</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>rfutils viewer</source>
        <translation>rfutils-Anzeige</translation>
    </message>
    <message>
        <source>Open a recording</source>
        <translation>Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Open a mask</source>
        <translation>Maske öffnen</translation>
    </message>
    <message>
        <source>Open a catalogue</source>
        <translation>Katalog öffnen</translation>
    </message>
    <message>
        <source>Open a map</source>
        <translation>Karte öffnen</translation>
    </message>
    <message>
        <source>Save the window as a picture</source>
        <translation>Fenster als Bild speichern</translation>
    </message>
    <message>
        <source>Save the sweep as CSV</source>
        <translation>Durchlauf als CSV speichern</translation>
    </message>
    <message>
        <source>Picture written: %1</source>
        <translation>Bild geschrieben: %1</translation>
    </message>
    <message>
        <source>Cannot write %1</source>
        <translation>Nicht zu schreiben: %1</translation>
    </message>
    <message>
        <source>There is no unit %1, only %2</source>
        <translation>Es gibt keine Einheit %1, nur %2</translation>
    </message>
    <message>
        <source>Data written</source>
        <translation>Daten geschrieben</translation>
    </message>
</context>
<context>
    <name>MapPage</name>
    <message>
        <source>no value</source>
        <translation>kein Wert</translation>
    </message>
    <message>
        <source>reading the map</source>
        <translation>Karte wird gelesen</translation>
    </message>
    <message>
        <source>%1 × %2 cells</source>
        <translation>%1 × %2 Zellen</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>No map: open an ASCII grid (.asc) or a BIL raster (.bil, .hdr).</source>
        <translation>Keine Karte: ASCII-Raster (.asc) oder BIL-Raster (.bil, .hdr) öffnen.</translation>
    </message>
</context>
<context>
    <name>MarkerTable</name>
    <message>
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Level</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>Δ to 1</source>
        <translation>Δ zu 1</translation>
    </message>
    <message>
        <source>Average</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Mean power</source>
        <translation>Mittl. Leistung</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Above limit</source>
        <translation>Über Grenze</translation>
    </message>
    <message>
        <source>next peak below</source>
        <translation>nächste Spitze darunter</translation>
    </message>
    <message>
        <source>highest level</source>
        <translation>höchster Pegel</translation>
    </message>
    <message>
        <source>next peak above</source>
        <translation>nächste Spitze darüber</translation>
    </message>
    <message>
        <source>remove the marker</source>
        <translation>Marker entfernen</translation>
    </message>
    <message>
        <source>No marker yet: click into the spectrum, or press 1 to 6. F1 lists all keys.</source>
        <translation>Noch kein Marker: ins Spektrum klicken oder 1 bis 6 drücken. F1 zeigt alle Tasten.</translation>
    </message>
</context>
<context>
    <name>Measurement</name>
    <message>
        <source>point %1</source>
        <translation>Punkt %1</translation>
    </message>
</context>
<context>
    <name>SettingsPanel</name>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>Row height</source>
        <translation>Zeilenhöhe</translation>
    </message>
    <message>
        <source>Sweeps kept</source>
        <translation>Durchläufe</translation>
    </message>
    <message>
        <source>Pace of files</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Pictures per s</source>
        <translation>Bilder je s</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>Hell/Dunkel</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Levels</source>
        <translation>Pegel</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maske</translation>
    </message>
    <message>
        <source>Spectrum from</source>
        <translation>Spektrum von</translation>
    </message>
    <message>
        <source>Spectrum to</source>
        <translation>Spektrum bis</translation>
    </message>
    <message>
        <source>Colours from</source>
        <translation>Farben von</translation>
    </message>
    <message>
        <source>Colours to</source>
        <translation>Farben bis</translation>
    </message>
    <message>
        <source>Gain in dBi</source>
        <translation>Gewinn in dBi</translation>
    </message>
    <message>
        <source>Instrument</source>
        <translation>Messgerät</translation>
    </message>
    <message>
        <source>Catalogue</source>
        <translation>Katalog</translation>
    </message>
    <message>
        <source>catalogue.json</source>
        <extracomment>The file with the labels of the settings, beside the others</extracomment>
        <translation>catalogue_de.json</translation>
    </message>
    <message>
        <source>Limit is for</source>
        <translation>Grenze gilt für</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>no recording: Ctrl+O opens one</source>
        <translation>keine Aufzeichnung: Strg+O öffnet eine</translation>
    </message>
    <message>
        <source>%L1 sweeps</source>
        <translation>%L1 Durchläufe</translation>
    </message>
    <message>
        <source>%L1 broken lines</source>
        <translation>%L1 kaputte Zeilen</translation>
    </message>
    <message>
        <source>%1 … %2 · %L3 points</source>
        <translation>%1 … %2 · %L3 Punkte</translation>
    </message>
</context>
<context>
    <name>Verdict</name>
    <message>
        <source>PASS</source>
        <translation>GUT</translation>
    </message>
    <message>
        <source>FAIL</source>
        <translation>FEHLER</translation>
    </message>
</context>
</TS>
