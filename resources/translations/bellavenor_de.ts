<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Labels</name>
    <message>
        <source>IDD_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDD_CANCEL</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>IDD_CLOSE</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>IDD_ABOUT</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>IDD_HELP</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>IDD_QUIT</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>IDD_APP_HOME_PAGE</source>
        <translation>Bellavenor-Website</translation>
    </message>
    <message>
        <source>IDD_COMPANY_PAGE</source>
        <translation>Website der Hersteller</translation>
    </message>
    <message>
        <source>IDD_PRIVACY_POLICY</source>
        <translation>Datenschutzerklärung</translation>
    </message>
    <message>
        <source>IDD_SUBMIT_TICKET</source>
        <translation>Support-Anfrage stellen</translation>
    </message>
    <message>
        <source>IDD_SMOOTH_SKIN</source>
        <translation>Haut glätten</translation>
    </message>
    <message>
        <source>IDD_WRINKLE_REMOVER</source>
        <translation>Falten entfernen</translation>
    </message>
    <message>
        <source>IDD_COLOR_EYES</source>
        <translation>Augenfarbe</translation>
    </message>
    <message>
        <source>IDD_WIDEN_EYES</source>
        <translation>Augen vergrößern</translation>
    </message>
    <message>
        <source>IDD_EYELID</source>
        <translation>Lidschatten</translation>
    </message>
    <message>
        <source>IDD_LIPS</source>
        <translation>Lippen</translation>
    </message>
    <message>
        <source>IDD_WHITE_TEETH</source>
        <translation>Zähne aufhellen</translation>
    </message>
    <message>
        <source>IDD_OPEN</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>IDD_FACE</source>
        <translation>Gesicht</translation>
    </message>
    <message>
        <source>IDD_SAVE</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>IDD_EYE</source>
        <translation>Augen</translation>
    </message>
    <message>
        <source>IDD_MOUTH</source>
        <translation>Mund</translation>
    </message>
    <message>
        <source>IDD_LEVEL</source>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>IDD_RADIUS</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>IDD_COLOR</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>IDD_TRANSPARENCY</source>
        <translation>Transparenz</translation>
    </message>
    <message>
        <source>IDD_ADVANCED</source>
        <translation>Erweitert</translation>
    </message>
    <message>
        <source>IDD_COLOR_LIPS</source>
        <translation>Lippenfarbe</translation>
    </message>
    <message>
        <source>IDD_CHEEKS</source>
        <translation>Rouge</translation>
    </message>
    <message>
        <source>IDD_EDIT_SIZE_POSITION</source>
        <translation>Größe und Lage bearbeiten</translation>
    </message>
    <message>
        <source>IDD_EDIT_COLOR_AROUND</source>
        <translation>Randfarbe</translation>
    </message>
    <message>
        <source>IDD_EDIT_COLOR_MAKEUP</source>
        <translation>Make-up-Farbe</translation>
    </message>
    <message>
        <source>IDD_LEFT</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>IDD_RIGHT</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>IDD_BLUR</source>
        <translation>Weichzeichnen</translation>
    </message>
    <message>
        <source>IDD_DARKEN_EYES</source>
        <translation>Augenschatten</translation>
    </message>
    <message>
        <source>IDD_LINE_WIDTH</source>
        <translation>Linienbreite</translation>
    </message>
    <message>
        <source>IDD_RESET</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>IDD_SHARE</source>
        <translation>Teilen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
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
        <source>Split View</source>
        <translation>Geteilte Ansicht</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Hold to see the untouched photo (\)</source>
        <translation>Gedrückt halten, um das unbearbeitete Foto zu sehen (\)</translation>
    </message>
    <message>
        <source>Export Settings…</source>
        <translation>Einstellungen exportieren…</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Vorlagen</translation>
    </message>
    <message>
        <source>Open Recent</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation>Einstellungen öffnen…</translation>
    </message>
</context>
<context>
    <name>AppDelegate</name>
    <message>
        <source>%1 faces</source>
        <translation>%1 Gesichter</translation>
    </message>
    <message>
        <source>%1 of %2 faces</source>
        <translation>%1 von %2 Gesichtern</translation>
    </message>
    <message>
        <source>face %1 of %2</source>
        <translation>Gesicht %1 von %2</translation>
    </message>
    <message>
        <source>Fit (%1)</source>
        <translation>Eingepasst (%1)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
</context>
<context>
    <name>EffectPanel</name>
    <message>
        <source>Defaults</source>
        <translation>Standardwerte</translation>
    </message>
    <message>
        <source>%1 Defaults</source>
        <translation>%1 Standardwerte</translation>
    </message>
</context>
<context>
    <name>Window_Cheek</name>
    <message>
        <source>Pick</source>
        <translation>Aufnehmen</translation>
    </message>
</context>
<context>
    <name>Window_Share</name>
    <message>
        <source>Add a text</source>
        <translation>Text hinzufügen</translation>
    </message>
</context>
<context>
    <name>PresetsMenu</name>
    <message>
        <source>No Presets</source>
        <translation>Keine Vorlagen</translation>
    </message>
    <message>
        <source>Save as Preset…</source>
        <translation>Als Vorlage speichern…</translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation>Vorlage löschen</translation>
    </message>
    <message>
        <source>Apply Preset %1</source>
        <translation>Vorlage %1 anwenden</translation>
    </message>
</context>
<context>
    <name>RecentPhotos</name>
    <message>
        <source>No Recent Photos</source>
        <translation>Keine zuletzt geöffneten Fotos</translation>
    </message>
</context>
<context>
    <name>EditHistory</name>
    <message>
        <source>%1 On</source>
        <translation>%1 ein</translation>
    </message>
    <message>
        <source>%1 Off</source>
        <translation>%1 aus</translation>
    </message>
    <message>
        <source>Move Blush Area</source>
        <translation>Rougefläche verschieben</translation>
    </message>
    <message>
        <source>Move Under-Eye Ring</source>
        <translation>Augenring verschieben</translation>
    </message>
    <message>
        <source>Change Settings</source>
        <translation>Einstellungen ändern</translation>
    </message>
    <message>
        <source>Heal Spot</source>
        <translation>Fleck heilen</translation>
    </message>
    <message>
        <source>Heal Stroke</source>
        <translation>Strich heilen</translation>
    </message>
    <message>
        <source>Add Skin</source>
        <translation>Haut hinzufügen</translation>
    </message>
    <message>
        <source>Remove Skin</source>
        <translation>Haut entfernen</translation>
    </message>
    <message>
        <source>Keep Spot</source>
        <translation>Fleck behalten</translation>
    </message>
</context>
<context>
    <name>Effects</name>
    <message>
        <source>Show spots</source>
        <translation>Flecken zeigen</translation>
    </message>
    <message>
        <source>1 spot healed</source>
        <translation>1 Fleck entfernt</translation>
    </message>
    <message>
        <source>%1 spots healed</source>
        <translation>%1 Flecken entfernt</translation>
    </message>
    <message>
        <source>1 mark kept</source>
        <translation>1 Mal behalten</translation>
    </message>
    <message>
        <source>%1 marks kept</source>
        <translation>%1 Male behalten</translation>
    </message>
    <message>
        <source>The largest spot healed, in percent of the face&apos;s width; a larger mark, such as a mole, stays</source>
        <translation>Der größte entfernte Fleck, in Prozent der Gesichtsbreite; ein größeres Mal, etwa ein Leberfleck, bleibt</translation>
    </message>
    <message>
        <source>Natural Skin</source>
        <translation>Natürliche Haut</translation>
    </message>
    <message>
        <source>Evenness</source>
        <translation>Ebenmäßigkeit</translation>
    </message>
    <message>
        <source>Texture</source>
        <translation>Struktur</translation>
    </message>
    <message>
        <source>Detail size</source>
        <translation>Detailgröße</translation>
    </message>
    <message>
        <source>How much of the skin&apos;s blotches, redness and small shadows is evened, in percent; the light that shapes the face stays</source>
        <translation>Wie stark Flecken, Rötungen und kleine Schatten der Haut ausgeglichen werden, in Prozent; das Licht, das das Gesicht formt, bleibt</translation>
    </message>
    <message>
        <source>The skin&apos;s pores and fine texture, in percent of what they are: 100 keeps them, less softens them, more brings them out</source>
        <translation>Poren und feine Struktur der Haut, in Prozent des Vorhandenen: 100 behält sie, weniger mildert sie, mehr hebt sie hervor</translation>
    </message>
    <message>
        <source>The size below which detail counts as texture, in percent of the face&apos;s width</source>
        <translation>Die Größe, unter der Details als Struktur gelten, in Prozent der Gesichtsbreite</translation>
    </message>
    <message>
        <source>How faint a spot may be and still be healed: at 0 only spots that stand out clearly, at 100 faint ones too</source>
        <translation>Wie schwach ein Fleck sein darf, um noch entfernt zu werden: bei 0 nur deutlich sichtbare, bei 100 auch schwache</translation>
    </message>
    <message>
        <source>Drag a blush area&apos;s corner to resize it, its inside to move it</source>
        <translation>Eine Ecke des Rouge-Bereichs ziehen ändert seine Größe, sein Inneres verschiebt ihn</translation>
    </message>
    <message>
        <source>Click the photo to take its colour</source>
        <translation>Ins Foto klicken übernimmt seine Farbe</translation>
    </message>
    <message>
        <source>Drag a green point to reshape an under-eye ring</source>
        <translation>Einen grünen Punkt ziehen formt einen Augenring um</translation>
    </message>
    <message>
        <source>Click a spot to heal it, a healed spot to keep it; drag to heal along a line</source>
        <translation>Einen Fleck anklicken entfernt ihn, einen entfernten anklicken behält ihn; ziehen entfernt entlang einer Linie</translation>
    </message>
    <message>
        <source>Heal Blemishes</source>
        <translation>Hautunreinheiten entfernen</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Strength</source>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>Edit spots</source>
        <translation>Flecken bearbeiten</translation>
    </message>
    <message>
        <source>Add skin</source>
        <translation>Haut hinzufügen</translation>
    </message>
    <message>
        <source>Remove skin</source>
        <translation>Haut entfernen</translation>
    </message>
    <message>
        <source>Brush size</source>
        <translation>Pinselgröße</translation>
    </message>
    <message>
        <source>Softness</source>
        <translation>Weichheit</translation>
    </message>
    <message>
        <source>Show mask</source>
        <translation>Maske zeigen</translation>
    </message>
    <message>
        <source>The width of the skin brushes, in percent of the face&apos;s width</source>
        <translation>Die Breite der Hautpinsel, in Prozent der Gesichtsbreite</translation>
    </message>
    <message>
        <source>How softly a brush stroke&apos;s edge fades, in percent of its radius</source>
        <translation>Wie weich der Rand eines Pinselstrichs ausläuft, in Prozent seines Radius</translation>
    </message>
    <message>
        <source>Paint over skin the effect missed to add it</source>
        <translation>Über Haut malen, die der Effekt übersehen hat, um sie hinzuzufügen</translation>
    </message>
    <message>
        <source>Paint over what is not skin to take it away</source>
        <translation>Über das malen, was keine Haut ist, um es herauszunehmen</translation>
    </message>
</context>
<context>
    <name>FileActions</name>
    <message>
        <source>Settings exported to %1</source>
        <translation>Einstellungen gespeichert unter %1</translation>
    </message>
    <message>
        <source>Open Settings</source>
        <translation>Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Choose a Face…</source>
        <translation>Gesicht wählen…</translation>
    </message>
    <message>
        <source>Mark the Face…</source>
        <translation>Gesicht markieren…</translation>
    </message>
    <message>
        <source>Finding every face…</source>
        <translation>Alle Gesichter werden gesucht…</translation>
    </message>
    <message>
        <source>Finding the face…</source>
        <translation>Gesicht wird gesucht…</translation>
    </message>
    <message>
        <source>Delete Preset</source>
        <translation>Voreinstellung löschen</translation>
    </message>
    <message>
        <source>Delete the preset &quot;%1&quot;? Its settings cannot be brought back.</source>
        <translation>Die Voreinstellung „%1“ löschen? Ihre Einstellungen lassen sich nicht wiederherstellen.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>HelpBrowser</name>
    <message>
        <source>Bellavenor Help</source>
        <translation>Bellavenor-Hilfe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>FacesList</name>
    <message>
        <source>Faces</source>
        <translation>Gesichter</translation>
    </message>
    <message>
        <source>Face %1</source>
        <translation>Gesicht %1</translation>
    </message>
    <message>
        <source>Retouch Face %1</source>
        <translation>Gesicht %1 retuschieren</translation>
    </message>
    <message>
        <source>Leave Out Face %1</source>
        <translation>Gesicht %1 auslassen</translation>
    </message>
</context>
<context>
    <name>FaceChooser</name>
    <message>
        <source>These are the eyes, brows, nose, mouth and jaw found in the frame. Is this the face?</source>
        <translation>Dies sind die Augen, Brauen, Nase, Mund und Kinnlinie, die im Rahmen gefunden wurden. Ist das das Gesicht?</translation>
    </message>
    <message>
        <source>Use this face</source>
        <translation>Dieses Gesicht verwenden</translation>
    </message>
    <message>
        <source>Draw again</source>
        <translation>Neu zeichnen</translation>
    </message>
    <message>
        <source>Choose a Face</source>
        <translation>Gesicht wählen</translation>
    </message>
    <message>
        <source>Mark the Face</source>
        <translation>Gesicht markieren</translation>
    </message>
    <message>
        <source>%1 faces were found. Click the face to retouch, or retouch every face.</source>
        <translation>%1 Gesichter wurden gefunden. Klicken Sie auf das Gesicht, das Sie retuschieren möchten, oder retuschieren Sie jedes Gesicht.</translation>
    </message>
    <message>
        <source>&amp;Every Face</source>
        <translation>&amp;Jedes Gesicht</translation>
    </message>
    <message>
        <source>No face was found. Drag a frame from the brows to the chin.</source>
        <translation>Es wurde kein Gesicht gefunden. Ziehen Sie einen Rahmen von den Augenbrauen bis zum Kinn.</translation>
    </message>
    <message>
        <source>Or click the face found on the photo turned or enlarged.</source>
        <translation>Oder klicken Sie auf das Gesicht, das auf dem gedrehten oder vergrößerten Foto gefunden wurde.</translation>
    </message>
    <message>
        <source>Or click one of the %1 faces found on the photo turned or enlarged.</source>
        <translation>Oder klicken Sie auf eines der %1 Gesichter, die auf dem gedrehten oder vergrößerten Foto gefunden wurden.</translation>
    </message>
</context>
<context>
    <name>Window_Eyes_Darken</name>
    <message>
        <source>Reset Under-Eye Rings</source>
        <translation>Augenringe zurücksetzen</translation>
    </message>
</context>
<context>
    <name>Dialogs</name>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Export Settings…</source>
        <translation>Einstellungen exportieren…</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation>Einstellungen öffnen…</translation>
    </message>
    <message>
        <source>Save as Preset</source>
        <translation>Als Vorlage speichern</translation>
    </message>
    <message>
        <source>Name of the preset:</source>
        <translation>Name der Vorlage:</translation>
    </message>
</context>
</TS>
