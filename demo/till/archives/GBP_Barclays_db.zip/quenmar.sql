-- Stand-in for quenmar.mdb, the device manager's Access database (not the vendor's): the demo
-- till builds an SQLite database from this, which the executesql.exe stand-in runs statements on.
CREATE TABLE SmartcardReaders_T (
    ReaderId INTEGER PRIMARY KEY,
    Localhost TEXT,
    DeviceName TEXT,
    Hostname TEXT,
    SmartCardReaderType INTEGER,
    ReaderCapabilities INTEGER
);
INSERT INTO SmartcardReaders_T VALUES (1, 'TILL01', 'COM1', '', 1, 4);
CREATE TABLE Settings_T (Name TEXT PRIMARY KEY, Value TEXT);
INSERT INTO Settings_T VALUES ('Acquirer', 'Barclays'), ('Currency', 'GBP');
