<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>BusSession</name>
    <message>
        <location filename="../serialport/bussession.cpp" line="+57"/>
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
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <location line="+9"/>
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
        <location filename="../app/mainwindow.cpp" line="+53"/>
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
        <location line="+47"/>
        <location line="+57"/>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <location line="-13"/>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <location line="+51"/>
        <source>Polling interval (ms): </source>
        <translation>Abfrageintervall (ms): </translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Servo address: </source>
        <translation>Servo-Adresse: </translation>
    </message>
    <message>
        <location line="+31"/>
        <location line="+19"/>
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
    <name>QtSerialPortBackend</name>
    <message>
        <location filename="../serialport/qtserialportbackend.cpp" line="+45"/>
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
        <location line="+65"/>
        <source>The connection to %1 was lost: %2.</source>
        <translation>Die Verbindung zu %1 ist verloren gegangen: %2.</translation>
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
        <source>Cannot open %1: %2.</source>
        <translation>%1 kann nicht geöffnet werden: %2.</translation>
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
        <translation>Übernehmen</translation>
    </message>
    <message>
        <location filename="../search/searchdialog.cpp" line="+275"/>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <location line="+44"/>
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
        <location line="+128"/>
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
        <location line="+46"/>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
</context>
<context>
    <name>UiGroupHelper</name>
    <message>
        <location filename="../widgets/uigrouphelper.cpp" line="+138"/>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <location line="+144"/>
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
</TS>
