<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ActivityDock</name>
    <message>
        <location filename="../views/activitydock.cpp" line="+32"/>
        <source>Activity</source>
        <translation>Aktivität</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Hide routine polls</source>
        <translation>Routineabfragen ausblenden</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <location line="+116"/>
        <source>Save activity</source>
        <translation>Aktivität speichern</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Text files (*.txt)</source>
        <translation>Textdateien (*.txt)</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Cannot write %1.</source>
        <translation>%1 kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>AxisRangeDialog</name>
    <message>
        <location filename="../plot/axisrangedialog.cpp" line="+17"/>
        <source>Y axes</source>
        <translation>Y-Achsen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Left axis</source>
        <translation>Linke Achse</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Right axis</source>
        <translation>Rechte Achse</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Autoscale</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Minimum</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Maximum</source>
        <translation>Maximum</translation>
    </message>
</context>
<context>
    <name>BusSession</name>
    <message>
        <location filename="../serialport/bussession.cpp" line="+61"/>
        <source>Cannot open %1: protocol version %2 is not supported.</source>
        <translation>%1 kann nicht geöffnet werden: Protokollversion %2 wird nicht unterstützt.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Cannot open the port: no port is chosen.</source>
        <translation>Der Port kann nicht geöffnet werden: Es ist kein Port gewählt.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Cannot open %1: the baud rate %2 is not supported.</source>
        <translation>%1 kann nicht geöffnet werden: Die Baudrate %2 wird nicht unterstützt.</translation>
    </message>
</context>
<context>
    <name>CsvRecorder</name>
    <message>
        <location filename="../trace/csvrecorder.cpp" line="+52"/>
        <source>Cannot write the recording %1: %2</source>
        <translation>Die Aufnahme %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <location line="+77"/>
        <source>Recording to %1 stopped: %2</source>
        <translation>Aufnahme in %1 beendet: %2</translation>
    </message>
</context>
<context>
    <name>EditView</name>
    <message>
        <location filename="../views/editview.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+75"/>
        <source>Realtime information</source>
        <translation>Echtzeitinformationen</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+726"/>
        <location line="+440"/>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <location line="-1146"/>
        <location line="+1222"/>
        <source>Angular velocity</source>
        <translation>Winkelgeschwindigkeit</translation>
    </message>
    <message>
        <location line="-1202"/>
        <location line="+637"/>
        <location line="+678"/>
        <source>Torque</source>
        <translation>Drehmoment</translation>
    </message>
    <message>
        <location line="-1295"/>
        <source>Voltage</source>
        <translation>Spannung</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Phase current (Iq)</source>
        <translation>Phasenstrom (Iq)</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Is moving:</source>
        <translation>In Bewegung:</translation>
    </message>
    <message>
        <location line="+34"/>
        <source>Version information</source>
        <translation>Versionsinformationen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Model number:</source>
        <translation>Modellnummer:</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Firmware version</source>
        <translation>Firmwareversion</translation>
    </message>
    <message>
        <location line="+41"/>
        <source>Hardware error status</source>
        <translation>Hardwarefehlerstatus</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Overload error</source>
        <translation>Überlastfehler</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Overheating error</source>
        <translation>Überhitzungsfehler</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Angle limit error</source>
        <translation>Winkelgrenzfehler</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Input voltage error</source>
        <translation>Eingangsspannungsfehler</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Encoder error</source>
        <translation>Encoderfehler</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Hall sensor error</source>
        <translation>Hallsensorfehler</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Status packet information</source>
        <translation>Statuspaketinformationen</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Process failure</source>
        <translation>Verarbeitungsfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Instruction error</source>
        <translation>Befehlsfehler</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Checksum error</source>
        <translation>Prüfsummenfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Data range error</source>
        <translation>Wertebereichsfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Data length error</source>
        <translation>Datenlängenfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Data limit error</source>
        <translation>Datengrenzfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Access error</source>
        <translation>Zugriffsfehler</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Alert</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Parameters (non-volatile)</source>
        <translation>Parameter (nichtflüchtig)</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Baud rate:</source>
        <translation>Baudrate:</translation>
    </message>
    <message>
        <location line="+13"/>
        <location line="+62"/>
        <location line="+81"/>
        <location line="+29"/>
        <location line="+548"/>
        <location line="+14"/>
        <location line="+99"/>
        <location line="+14"/>
        <source>-</source>
        <translation>-</translation>
    </message>
    <message>
        <location line="-840"/>
        <source>9600</source>
        <translation>9600</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>19200</source>
        <translation>19200</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>38400</source>
        <translation>38400</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>57600</source>
        <translation>57600</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>115200</source>
        <translation>115200</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>200000</source>
        <translation>200000</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>250000</source>
        <translation>250000</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>400000</source>
        <translation>400000</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>500000</source>
        <translation>500000</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>1000000</source>
        <translation>1000000</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>2000000</source>
        <translation>2000000</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Acknowledge response time</source>
        <translation>Antwortverzögerung</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Operating mode:</source>
        <translation>Betriebsart:</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Wheel</source>
        <translation>Rad</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Joint</source>
        <translation>Gelenk</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Multi-turn</source>
        <translation>Mehrfachumdrehung</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Stepper</source>
        <translation>Schrittmotor</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Input mode:</source>
        <translation>Eingabemodus:</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+4"/>
        <source>Trajectory</source>
        <translation>Trajektorie</translation>
    </message>
    <message>
        <location line="+33"/>
        <source>Limits</source>
        <translation>Limits</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Clockwise angle limit</source>
        <translation>Winkelgrenze UZS</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Counter-clockwise angle limit</source>
        <translation>Winkelgrenze GUZS</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Temperature limit</source>
        <translation>Temperaturgrenze</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Minimum voltage</source>
        <translation>Mindestspannung</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Maximum voltage</source>
        <translation>Höchstspannung</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Phase current (Iq) limit:</source>
        <translation>Grenze Phasenstrom (Iq):</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Angular velocity limit</source>
        <translation>Grenze Drehzahl</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Acceleration limit</source>
        <translation>Max. Beschleunigung</translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Adjustments</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Home position offset</source>
        <translation>Nullpunktversatz</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Moving threshold</source>
        <translation>Bewegungsschwelle</translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Default control parameters</source>
        <translation>Standard-Regelparameter</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Position proportional term:</source>
        <translation>P-Anteil Position:</translation>
    </message>
    <message>
        <location line="+14"/>
        <location line="+251"/>
        <source>Velocity feedforward term:</source>
        <translation>Vorsteuerung Geschw.:</translation>
    </message>
    <message>
        <location line="-234"/>
        <source>Velocity proportional term:</source>
        <translation>P-Anteil Geschwindigkeit:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Velocity integral term:</source>
        <translation>I-Anteil Geschwindigkeit:</translation>
    </message>
    <message>
        <location line="+14"/>
        <location line="+319"/>
        <source>Current feedforward term:</source>
        <translation>Vorsteuerung Strom:</translation>
    </message>
    <message>
        <location line="-302"/>
        <location line="+415"/>
        <source>Angular velocity profile:</source>
        <translation>Drehzahlprofil:</translation>
    </message>
    <message>
        <location line="-404"/>
        <location line="+415"/>
        <source>Acceleration profile:</source>
        <translation>Beschleunigungsprofil:</translation>
    </message>
    <message>
        <location line="-374"/>
        <location line="+469"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="-449"/>
        <location line="+469"/>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <location line="-426"/>
        <source>Parameters (volatile)</source>
        <translation>Parameter (flüchtig)</translation>
    </message>
    <message>
        <location line="+43"/>
        <source>Target position</source>
        <translation>Zielposition</translation>
    </message>
    <message>
        <location line="+17"/>
        <location line="+99"/>
        <source>Proportional term:</source>
        <translation>P-Anteil:</translation>
    </message>
    <message>
        <location line="-40"/>
        <source>Target velocity</source>
        <translation>Zielgeschwindigkeit</translation>
    </message>
    <message>
        <location line="+11"/>
        <location line="+113"/>
        <source>Direction:</source>
        <translation>Richtung:</translation>
    </message>
    <message>
        <location line="-102"/>
        <location line="+113"/>
        <source>Counter-clockwise</source>
        <translation>Gegen den Uhrzeigersinn</translation>
    </message>
    <message>
        <location line="-108"/>
        <location line="+113"/>
        <source>Clockwise</source>
        <translation>Im Uhrzeigersinn</translation>
    </message>
    <message>
        <location line="-86"/>
        <source>Integral term:</source>
        <translation>I-Anteil:</translation>
    </message>
    <message>
        <location line="+59"/>
        <source>Target torque</source>
        <translation>Zieldrehmoment</translation>
    </message>
    <message>
        <location line="+49"/>
        <source>Profile</source>
        <translation>Profil</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Miscellaneous</source>
        <translation>Sonstiges</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Enable motor</source>
        <translation>Motor einschalten</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Pending shadow instruction:</source>
        <translation>Ausstehender Schattenbefehl:</translation>
    </message>
</context>
<context>
    <name>LinkIndicator</name>
    <message>
        <location filename="../views/linkindicator.cpp" line="+55"/>
        <source>%1
Click to open the activity log.</source>
        <translation>%1
Ein Klick öffnet das Aktivitätsprotokoll.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Click to open the activity log.</source>
        <translation>Ein Klick öffnet das Aktivitätsprotokoll.</translation>
    </message>
</context>
<context>
    <name>LinkMonitor</name>
    <message>
        <location filename="../monitor/linkmonitor.cpp" line="+45"/>
        <location line="+168"/>
        <source>No link</source>
        <translation>Keine Verbindung</translation>
    </message>
    <message>
        <location line="-56"/>
        <source>Servo %1 reported: %2</source>
        <translation>Servo %1 meldet: %2</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Servo %1 refused the %2: %3</source>
        <translation>Servo %1 lehnte den Befehl „%2“ ab: %3</translation>
    </message>
    <message>
        <location line="+58"/>
        <source>Identifying servo %1 at %2 baud on %3</source>
        <translation>Servo %1 wird mit %2 Baud an %3 erkannt</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Simulated servos: %1</source>
        <translation>Simulierte Servos: %1</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Link lost: %1</source>
        <translation>Verbindung verloren: %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>No answer from servo %1 at %2 baud on %3. Check the servo address and baud rate, or search the bus.</source>
        <translation>Keine Antwort von Servo %1 mit %2 Baud an %3. Prüfen Sie Servo-Adresse und Baudrate oder durchsuchen Sie den Bus.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Servo %1 stopped answering (last reply %2 s ago)</source>
        <translation>Servo %1 antwortet nicht mehr (letzte Antwort vor %2 s)</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1, hardware alert</source>
        <translation>%1, Hardwarewarnung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Servo %1 reports a hardware alert</source>
        <translation>Servo %1 meldet eine Hardwarewarnung</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>%1 · %2 baud · servo %3 · %4 replies/s · %5 timeouts · %6 errors</source>
        <translation>%1 · %2 Baud · Servo %3 · %4 Antworten/s · %5 Timeouts · %6 Fehler</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Simulated servos · %1</source>
        <translation>Simulierte Servos · %1</translation>
    </message>
</context>
<context>
    <name>LoadParametersDialog</name>
    <message>
        <location filename="../views/loadparametersdialog.ui" line="+14"/>
        <source>Load parameters</source>
        <translation>Parameter laden</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Servo</source>
        <translation>Servo</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>The motor is on. The servo takes the non-volatile registers (ID to Default acceleration profile) only with the motor off.</source>
        <translation>Der Motor ist eingeschaltet. Die nichtflüchtigen Register (ID bis Default acceleration profile) nimmt das Servo nur bei ausgeschaltetem Motor an.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Switch the motor off before writing</source>
        <translation>Motor vor dem Schreiben ausschalten</translation>
    </message>
    <message>
        <location filename="../views/loadparametersdialog.cpp" line="+21"/>
        <source>Write ticked registers</source>
        <translation>Angehakte Register schreiben</translation>
    </message>
    <message>
        <location line="+54"/>
        <source>not read</source>
        <translation>nicht gelesen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <location filename="../app/mainwindow.ui" line="+14"/>
        <source>Zelvar Servo Manager</source>
        <translation>Zelvar Servo Manager</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Unit fields</source>
        <translation>Felder in Einheiten</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Register fields</source>
        <translation>Registerfelder</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Connections</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>toolBar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>C&amp;onnect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Disconnect</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+3"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ctrl+C</source>
        <translation>Ctrl+C</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Shift+S</source>
        <translation>Shift+S</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&amp;Reboot</source>
        <translation>&amp;Neustart</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Reboot</source>
        <translation>Neustart</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <location line="+9"/>
        <location filename="../app/mainwindow.cpp" line="+272"/>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>&amp;Factory reset</source>
        <translation>&amp;Werkseinstellungen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <location filename="../app/mainwindow.cpp" line="-195"/>
        <source>Error occurred during reboot operation</source>
        <translation>Beim Neustart ist ein Fehler aufgetreten</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Error during reboot of Zelvar servo id:%1</source>
        <translation>Fehler beim Neustart des Zelvar-Servos ID:%1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Zelvar servo id:%1 was rebooted successfully</source>
        <translation>Zelvar-Servo ID:%1 wurde erfolgreich neu gestartet</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No reply from Zelvar servo id:%1 to the reboot</source>
        <translation>Keine Antwort von Zelvar-Servo ID:%1 auf den Neustart</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Error occurred during factory reset operation</source>
        <translation>Beim Zurücksetzen auf Werkseinstellungen ist ein Fehler aufgetreten</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Error during factory reset of Zelvar servo id:%1</source>
        <translation>Fehler beim Zurücksetzen des Zelvar-Servos ID:%1 auf Werkseinstellungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Factory reset of Zelvar servo id:%1 was successful</source>
        <translation>Zelvar-Servo ID:%1 wurde erfolgreich auf Werkseinstellungen zurückgesetzt</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No reply from Zelvar servo id:%1 to the factory reset</source>
        <translation>Keine Antwort von Zelvar-Servo ID:%1 auf das Zurücksetzen auf Werkseinstellungen</translation>
    </message>
    <message>
        <location line="+54"/>
        <location line="+75"/>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <location line="-18"/>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <location line="+67"/>
        <source>Factory reset</source>
        <translation>Werkseinstellungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Reset servo %1 on %2 at %3 baud to its factory settings?</source>
        <translation>Servo %1 an %2 mit %3 Baud auf Werkseinstellungen zurücksetzen?</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Every parameter except the servo&apos;s ID and baud rate goes back to its factory value. This cannot be undone.</source>
        <translation>Alle Parameter außer ID und Baudrate des Servos erhalten wieder ihren Werkswert. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <location line="+39"/>
        <source>Polling interval (ms): </source>
        <translation>Abfrageintervall (ms): </translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Servo address: </source>
        <translation>Servo-Adresse: </translation>
    </message>
    <message>
        <location line="+141"/>
        <location line="+27"/>
        <location line="+2"/>
        <location line="+7"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Success</source>
        <translation>Erfolg</translation>
    </message>
</context>
<context>
    <name>ParameterFileActions</name>
    <message>
        <location filename="../app/parameterfileactions.cpp" line="+32"/>
        <source>Parameter files (*.json);;All files (*)</source>
        <translation>Parameterdateien (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Servo</source>
        <translation>Servo</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Save parameters…</source>
        <translation>Parameter speichern…</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Load parameters…</source>
        <translation>Parameter laden…</translation>
    </message>
    <message>
        <location line="+45"/>
        <source>servo-%1.json</source>
        <translation>servo-%1.json</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Save parameters</source>
        <translation>Parameter speichern</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Load parameters</source>
        <translation>Parameter laden</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Servo id:%1 did not answer; nothing was saved.</source>
        <translation>Servo ID:%1 hat nicht geantwortet; es wurde nichts gespeichert.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Could not write %1: %2</source>
        <translation>%1 konnte nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The parameters of servo id:%1 were saved to %2.</source>
        <translation>Die Parameter von Servo ID:%1 wurden in %2 gespeichert.</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Could not read %1: %2</source>
        <translation>%1 konnte nicht gelesen werden: %2</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 is too large for a parameter file; nothing was written.</source>
        <translation>%1 ist zu groß für eine Parameterdatei; es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Servo id:%1 did not answer; nothing was written.</source>
        <translation>Servo ID:%1 hat nicht geantwortet; es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>%1 was not loaded. %2 Nothing was written.</source>
        <translation>%1 wurde nicht geladen. %2 Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Servo id:%1 already holds every value of %2.</source>
        <translation>Servo ID:%1 hat bereits jeden Wert aus %2.</translation>
    </message>
    <message numerus="yes">
        <location line="+5"/>
        <source>%1, saved %2 from servo id:%3 (firmware %4). %n register(s) differ from servo id:%5; tick the ones to write. ID, baud rate, the motor switch and the targets start unticked.</source>
        <translation>
            <numerusform>%1, gespeichert am %2 von Servo ID:%3 (Firmware %4). %n Register weicht von Servo ID:%5 ab; haken Sie die zu schreibenden an. ID, Baudrate, Motorschalter und Zielwerte sind anfangs nicht angehakt.</numerusform>
            <numerusform>%1, gespeichert am %2 von Servo ID:%3 (Firmware %4). %n Register weichen von Servo ID:%5 ab; haken Sie die zu schreibenden an. ID, Baudrate, Motorschalter und Zielwerte sind anfangs nicht angehakt.</numerusform>
        </translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Nothing was written. %1</source>
        <translation>Es wurde nichts geschrieben. %1</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>The ticked registers of %1 were written. Servo id:%2 now answers at another id or baud rate: connect to it there to check them.</source>
        <translation>Die angehakten Register aus %1 wurden geschrieben. Servo ID:%2 antwortet jetzt unter einer anderen ID oder Baudrate: Verbinden Sie sich dort, um sie zu prüfen.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>The ticked registers of %1 were sent, but servo id:%2 did not answer the read-back.</source>
        <translation>Die angehakten Register aus %1 wurden gesendet, aber Servo ID:%2 hat auf das Zurücklesen nicht geantwortet.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Servo id:%1 took all %2 ticked registers of %3.</source>
        <translation>Servo ID:%1 hat alle %2 angehakten Register aus %3 übernommen.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>%1: servo %2, file %3</source>
        <translation>%1: Servo %2, Datei %3</translation>
    </message>
    <message numerus="yes">
        <location line="+7"/>
        <source>Servo id:%1 did not take %n register(s) of %2:</source>
        <translation>
            <numerusform>Servo ID:%1 hat %n Register aus %2 nicht übernommen:</numerusform>
            <numerusform>Servo ID:%1 hat %n Register aus %2 nicht übernommen:</numerusform>
        </translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Success</source>
        <translation>Erfolg</translation>
    </message>
</context>
<context>
    <name>ParameterFileCodec</name>
    <message>
        <location filename="../params/parameterfilecodec.cpp" line="+107"/>
        <source>The file is damaged: %1 at character %2.</source>
        <translation>Die Datei ist beschädigt: %1 bei Zeichen %2.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>The file is not a parameter file: it has no format version.</source>
        <translation>Die Datei ist keine Parameterdatei: Sie hat keine Formatversion.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The file has format version %1; this program reads version %2.</source>
        <translation>Die Datei hat die Formatversion %1; dieses Programm liest Version %2.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The file is damaged: it names no model number.</source>
        <translation>Die Datei ist beschädigt: Sie nennt keine Modellnummer.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The file is for model number %1; this servo is model number %2.</source>
        <translation>Die Datei ist für Modellnummer %1; dieses Servo hat Modellnummer %2.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The file is damaged: it has no list of registers.</source>
        <translation>Die Datei ist beschädigt: Sie hat keine Registerliste.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>The file is damaged: it names &quot;%1&quot; twice.</source>
        <translation>Die Datei ist beschädigt: Sie nennt „%1“ zweimal.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>The file is damaged: a register has no description.</source>
        <translation>Die Datei ist beschädigt: Ein Register hat keine Beschreibung.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The file names a register this model does not have: &quot;%1&quot;.</source>
        <translation>Die Datei nennt ein Register, das dieses Modell nicht hat: „%1“.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The file sets &quot;%1&quot;, which is read-only.</source>
        <translation>Die Datei setzt „%1“, das nur gelesen werden kann.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The file is damaged: it puts &quot;%1&quot; at another address than %2.</source>
        <translation>Die Datei ist beschädigt: Sie legt „%1“ an eine andere Adresse als %2.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The file is damaged: the raw value of &quot;%1&quot; is missing or not a whole number.</source>
        <translation>Die Datei ist beschädigt: Der Rohwert von „%1“ fehlt oder ist keine ganze Zahl.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The file is damaged: its raw value %1 is out of range (%2).</source>
        <translation>Die Datei ist beschädigt: Ihr Rohwert %1 liegt außerhalb des Bereichs (%2).</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>The file is damaged: &quot;%1&quot; has raw value %2, which is %3 %4, but value %5.</source>
        <translation>Die Datei ist beschädigt: „%1“ hat den Rohwert %2, also %3 %4, aber den Wert %5.</translation>
    </message>
</context>
<context>
    <name>PlotDock</name>
    <message>
        <location filename="../plot/plotdock.cpp" line="+41"/>
        <source>1 s</source>
        <translation>1 s</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>2 s</source>
        <translation>2 s</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>5 s</source>
        <translation>5 s</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>10 s</source>
        <translation>10 s</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>30 s</source>
        <translation>30 s</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>1 min</source>
        <translation>1 min</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>2 min</source>
        <translation>2 min</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>5 min</source>
        <translation>5 min</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>10 min</source>
        <translation>10 min</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Time before the latest reply (s)</source>
        <translation>Zeit vor der letzten Antwort (s)</translation>
    </message>
    <message>
        <location line="+47"/>
        <location line="+10"/>
        <source>Channels</source>
        <translation>Kanäle</translation>
    </message>
    <message>
        <location line="-8"/>
        <source>Right axis</source>
        <translation>Rechte Achse</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Axes…</source>
        <translation>Achsen…</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Window: </source>
        <translation>Zeitfenster: </translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+264"/>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <location line="-261"/>
        <source>Pause to zoom (wheel) and pan (drag)</source>
        <translation>Anhalten, um zu zoomen (Mausrad) und zu verschieben (Ziehen)</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Export…</source>
        <translation>Exportieren…</translation>
    </message>
    <message>
        <location line="+138"/>
        <source>Registers</source>
        <translation>Register</translation>
    </message>
    <message>
        <location line="+65"/>
        <source>Export plot</source>
        <translation>Diagramm exportieren</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>PNG image (*.png);;SVG drawing (*.svg)</source>
        <translation>PNG-Bild (*.png);;SVG-Zeichnung (*.svg)</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Cannot write the plot to %1</source>
        <translation>Das Diagramm kann nicht in %1 geschrieben werden</translation>
    </message>
    <message>
        <location line="+51"/>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <location line="+38"/>
        <source>&lt;b&gt;%1 s&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1 s&lt;/b&gt;</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>no reply</source>
        <translation>keine Antwort</translation>
    </message>
</context>
<context>
    <name>QtSerialPortBackend</name>
    <message>
        <location filename="../serialport/qtserialportbackend.cpp" line="+49"/>
        <source>Cannot open %1: the baud rate %2 is not supported.</source>
        <translation>%1 kann nicht geöffnet werden: Die Baudrate %2 wird nicht unterstützt.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Cannot open %1: the port does not support the baud rate %2.</source>
        <translation>%1 kann nicht geöffnet werden: Der Port unterstützt die Baudrate %2 nicht.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Cannot open %1: the port refused 8 data bits, no parity, 1 stop bit (%2).</source>
        <translation>%1 kann nicht geöffnet werden: Der Port lehnt 8 Datenbits, keine Parität, 1 Stoppbit ab (%2).</translation>
    </message>
    <message>
        <location line="+77"/>
        <source>The connection to %1 was lost: %2.</source>
        <translation>Die Verbindung zu %1 ist verloren gegangen: %2.</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>the port took no more data; the adapter was probably unplugged</source>
        <translation>der Port nahm keine Daten mehr an; der Adapter wurde wohl abgezogen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>the adapter was unplugged or stopped answering</source>
        <translation>der Adapter wurde abgezogen oder antwortet nicht mehr</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Cannot open %1: there is no such port.</source>
        <translation>%1 kann nicht geöffnet werden: Diesen Port gibt es nicht.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Cannot open %1: the port is busy; another program is using it.</source>
        <translation>%1 kann nicht geöffnet werden: Der Port ist belegt; ein anderes Programm verwendet ihn.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Cannot open %1: permission denied. Add your user to the dialout group (sudo usermod -aG dialout $USER) and log in again.</source>
        <translation>%1 kann nicht geöffnet werden: Zugriff verweigert. Fügen Sie Ihren Benutzer der Gruppe dialout hinzu (sudo usermod -aG dialout $USER) und melden Sie sich neu an.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Cannot open %1: the port is already open.</source>
        <translation>%1 kann nicht geöffnet werden: Der Port ist bereits geöffnet.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Cannot open %1: the system gave no reason. Unplug the adapter, plug it in again and retry.</source>
        <translation>%1 kann nicht geöffnet werden: Das System nennt keinen Grund. Ziehen Sie den Adapter ab, stecken Sie ihn wieder ein und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Cannot open %1: %2.</source>
        <translation>%1 kann nicht geöffnet werden: %2.</translation>
    </message>
</context>
<context>
    <name>RecordingController</name>
    <message>
        <location filename="../plot/recordingcontroller.cpp" line="+59"/>
        <source>Record to</source>
        <translation>Aufnehmen in</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>CSV files (*.csv);;All files (*)</source>
        <translation>CSV-Dateien (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Stop recording</source>
        <translation>Aufnahme beenden</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Record…</source>
        <translation>Aufnehmen…</translation>
    </message>
</context>
<context>
    <name>RecordingIndicator</name>
    <message>
        <location filename="../plot/recordingindicator.cpp" line="+34"/>
        <source>&lt;span style=&quot;color:#d00000&quot;&gt;&amp;#9679;&lt;/span&gt; Recording %1, %2 rows</source>
        <translation>&lt;span style=&quot;color:#d00000&quot;&gt;&amp;#9679;&lt;/span&gt; Aufnahme %1, %2 Zeilen</translation>
    </message>
</context>
<context>
    <name>RegisterView</name>
    <message>
        <location filename="../views/registerview.ui" line="+14"/>
        <source>Form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Non-volatile bank 1</source>
        <translation>Nichtflüchtige Bank 1</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Non-volatile bank 2</source>
        <translation>Nichtflüchtige Bank 2</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Volatile bank 1</source>
        <translation>Flüchtige Bank 1</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Volatile bank 2</source>
        <translation>Flüchtige Bank 2</translation>
    </message>
    <message>
        <location line="+70"/>
        <location line="+52"/>
        <location line="+47"/>
        <location line="+53"/>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <location line="-147"/>
        <location line="+52"/>
        <location line="+47"/>
        <location line="+53"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <location line="-147"/>
        <location line="+52"/>
        <location line="+47"/>
        <location line="+53"/>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
</context>
<context>
    <name>SearchDialog</name>
    <message>
        <location filename="../search/searchdialog.ui" line="+14"/>
        <source>Device search</source>
        <translation>Gerätesuche</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Serial port:</source>
        <translation>Serieller Port:</translation>
    </message>
    <message>
        <location line="+34"/>
        <source>ID search range</source>
        <translation>ID-Suchbereich</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Lower:</source>
        <translation>Von:</translation>
    </message>
    <message>
        <location line="+38"/>
        <source>Upper: </source>
        <translation>Bis: </translation>
    </message>
    <message>
        <location line="+39"/>
        <source>Baud rates</source>
        <translation>Baudraten</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Select/Unselect</source>
        <translation>Alle/Keine</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>9600</source>
        <translation>9600</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>19200</source>
        <translation>19200</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>38400</source>
        <translation>38400</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>57600</source>
        <translation>57600</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>115200</source>
        <translation>115200</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>200000</source>
        <translation>200000</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>250000</source>
        <translation>250000</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>400000</source>
        <translation>400000</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>500000</source>
        <translation>500000</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>1000000</source>
        <translation>1000000</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Scan</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Baud rate</source>
        <translation>Baudrate</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Select</source>
        <translation>Wählen</translation>
    </message>
    <message>
        <location filename="../search/searchdialog.cpp" line="+297"/>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <location line="-128"/>
        <location line="+2"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1 could not be set to %2 baud, so no servo was searched for there. The other baud rates were searched.</source>
        <translation>%1 ließ sich nicht auf %2 Baud einstellen, dort wurde also nicht gesucht. Die anderen Baudraten wurden durchsucht.</translation>
    </message>
    <message>
        <location line="+196"/>
        <source>Zelvar M</source>
        <translation>Zelvar M</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <location filename="../settings/settingsdialog.ui" line="+14"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Select Serial Port</source>
        <translation>Seriellen Port wählen</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Description:</source>
        <translation>Beschreibung:</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Manufacturer:</source>
        <translation>Hersteller:</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Location:</source>
        <translation>Ort:</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Vendor ID:</source>
        <translation>Hersteller-ID:</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Product ID:</source>
        <translation>Produkt-ID:</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>BaudRate:</source>
        <translation>Baudrate:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Data bits:</source>
        <translation>Datenbits:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Parity:</source>
        <translation>Parität:</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Stop bits:</source>
        <translation>Stoppbits:</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Angular velocity</source>
        <translation>Winkelgeschwindigkeit</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>rad/s</source>
        <translation>rad/s</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>rpm</source>
        <translation>rpm</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Radians</source>
        <translation>Radiant</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Degrees</source>
        <translation>Grad</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Angular acceleration</source>
        <translation>Winkelbeschleunigung</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>rad/s2</source>
        <translation>rad/s2</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Torque</source>
        <translation>Drehmoment</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Nm</source>
        <translation>Nm</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>kg-cm</source>
        <translation>kg-cm</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Voltage</source>
        <translation>Spannung</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Volts</source>
        <translation>Volt</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Current</source>
        <translation>Strom</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Amps</source>
        <translation>Ampere</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>mA</source>
        <translation>mA</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>°C</source>
        <translation>°C</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>°F</source>
        <translation>°F</translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Servo data</source>
        <translation>Servodaten</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Hex</source>
        <translation>Hex</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Decimal</source>
        <translation>Dezimal</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location filename="../settings/settingsdialog.cpp" line="+29"/>
        <source>5</source>
        <translation>5</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>6</source>
        <translation>6</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>7</source>
        <translation>7</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>8</source>
        <translation>8</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Even</source>
        <translation>Gerade</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Odd</source>
        <translation>Ungerade</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Mark</source>
        <translation>Mark</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>1</source>
        <translation>1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>1.5</source>
        <translation>1.5</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>2</source>
        <translation>2</translation>
    </message>
    <message>
        <location line="+140"/>
        <source>Description: %1</source>
        <translation>Beschreibung: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Manufacturer: %1</source>
        <translation>Hersteller: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Location: %1</source>
        <translation>Ort: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Vendor Identifier: %1</source>
        <translation>Herstellerkennung: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Product Identifier: %1</source>
        <translation>Produktkennung: %1</translation>
    </message>
    <message>
        <location line="+47"/>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
</context>
<context>
    <name>TelemetryDecoder</name>
    <message>
        <location filename="../telemetry/telemetrydecoder.cpp" line="+141"/>
        <source>%1 takes raw values %2 to %3</source>
        <translation>%1 nimmt Rohwerte von %2 bis %3 an</translation>
    </message>
</context>
<context>
    <name>TransactionTableModel</name>
    <message>
        <location filename="../monitor/transactiontablemodel.cpp" line="+46"/>
        <source>Request: %1
Reply: %2</source>
        <translation>Anfrage: %1
Antwort: %2</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <location line="+41"/>
        <source>Time (ms)</source>
        <translation>Zeit (ms)</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Instruction</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Id</source>
        <translation>ID</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Round trip (ms)</source>
        <translation>Antwortzeit (ms)</translation>
    </message>
</context>
<context>
    <name>TransactionText</name>
    <message>
        <location filename="../monitor/transactiontext.cpp" line="+23"/>
        <source>result fail</source>
        <translation>Verarbeitungsfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>instruction error</source>
        <translation>Befehlsfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>checksum error</source>
        <translation>Prüfsummenfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>data range error</source>
        <translation>Wertebereichsfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>data length error</source>
        <translation>Datenlängenfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>data limit error</source>
        <translation>Datengrenzfehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>access error</source>
        <translation>Zugriffsfehler</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>access error: the motor is enabled</source>
        <translation>Zugriffsfehler: Der Motor ist eingeschaltet</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>access error: the register cannot be written</source>
        <translation>Zugriffsfehler: Das Register ist nicht beschreibbar</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>access error: the register cannot be read</source>
        <translation>Zugriffsfehler: Das Register ist nicht lesbar</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>error %1</source>
        <translation>Fehler %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>hardware alert</source>
        <translation>Hardwarewarnung</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>ping</source>
        <translation>Ping</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>read</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>write</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>factory reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>reboot</source>
        <translation>Neustart</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>reply</source>
        <translation>Antwort</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>refused: %1</source>
        <translation>abgelehnt: %1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>reply, %1</source>
        <translation>Antwort, %1</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>timeout</source>
        <translation>Zeitüberschreitung</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>bad checksum</source>
        <translation>falsche Prüfsumme</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>superseded</source>
        <translation>überholt</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>not sent</source>
        <translation>nicht gesendet</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>port lost</source>
        <translation>Port verloren</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>time (ms)	instruction	id	address	length	outcome	round trip (ms)	request	reply</source>
        <translation>Zeit (ms)	Befehl	ID	Adresse	Länge	Ergebnis	Antwortzeit (ms)	Anfrage	Antwort</translation>
    </message>
</context>
<context>
    <name>UiGroupHelper</name>
    <message>
        <location filename="../widgets/uigrouphelper.cpp" line="+173"/>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <location line="+130"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The servo&apos;s values have not been read yet, so nothing was written. Apply again once they show.</source>
        <translation>Die Werte des Servos sind noch nicht gelesen, daher wurde nichts geschrieben. Übernehmen Sie erneut, sobald sie angezeigt werden.</translation>
    </message>
    <message>
        <location line="+38"/>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
</context>
<context>
    <name>UnitsHelper</name>
    <message>
        <location filename="../device/unitshelper.cpp" line="+18"/>
        <source>radians</source>
        <translation>Radiant</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>degrees</source>
        <translation>Grad</translation>
    </message>
</context>
<context>
    <name>WritePlanner</name>
    <message>
        <location filename="../params/writeplanner.cpp" line="+34"/>
        <source>&quot;%1&quot; is read-only.</source>
        <translation>„%1“ kann nur gelesen werden.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>The motor is on: the servo takes the non-volatile registers only with the motor off.</source>
        <translation>Der Motor ist eingeschaltet: Die nichtflüchtigen Register nimmt das Servo nur bei ausgeschaltetem Motor an.</translation>
    </message>
</context>
</TS>
