-- Layout 4.44, after 4.40. Imports and flags of every entry, imports under their new name, intensity of an activity.

UPDATE db_info SET MinVersion=44;

CREATE TABLE [labvalues] ([ID] COUNTER, [labor_id] LONG DEFAULT -1, [labor_desc] TEXT(255), [vdate] DATETIME,
  [vtime] DATETIME, [sComment] TEXT(255), [value] SINGLE DEFAULT -1, [importid] LONG DEFAULT 0, [flag] LONG DEFAULT 0,
  [type] SHORT DEFAULT 0, [method] SHORT DEFAULT 0);
ALTER TABLE glucose ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE glucose ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE pressure ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE pressure ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE insulin ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE insulin ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE intakes ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE intakes ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE medicaldata ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE medicaldata ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE activities ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE activities ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE eventlog ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE eventlog ADD COLUMN importid LONG DEFAULT 0;
ALTER TABLE insulinpump ADD COLUMN flag LONG DEFAULT 0;
ALTER TABLE insulinpump ADD COLUMN importid LONG DEFAULT 0;
UPDATE glucose SET flag=4, importid=7 WHERE Bloodtype=255;

CREATE TABLE [import] ([id] COUNTER, [ImportFrom] SHORT DEFAULT 0, [ImportDesc] TEXT(30), [ImportID] TEXT(30),
  [ImportType] SHORT DEFAULT 0, [Flags] LONG DEFAULT 0, [MeterID] TEXT(50), [DateOfImport] DATETIME,
  [DateFirstImported] DATETIME, [DateLastImported] DATETIME);
INSERT INTO import (id, ImportFrom, ImportDesc, ImportID, ImportType, MeterID, DateOfImport)
  SELECT id, ImportFrom, ImportDesc, importid, ImportType, MeterID, DateOfImport FROM imports;
DROP TABLE imports;

ALTER TABLE activities ADD COLUMN intensity SHORT DEFAULT 0;
UPDATE activities SET intensity=2;
ALTER TABLE callback DROP COLUMN [display];
ALTER TABLE callback ADD COLUMN WhatColumns TEXT(255);
ALTER TABLE callback ADD COLUMN [Display] TEXT(255);
ALTER TABLE callback ADD COLUMN WhatMarkers LONG DEFAULT 0;
UPDATE callback SET WhatColumns='1,2', [Display]='Liste';

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! labvalues: ID 0 16, labor_id 0 1, labor_desc 0 1 empty, vdate 0 1, vtime 0 1, sComment 0 2 empty, value 0 1
--! labvalues: importid 0 1, flag 0 1, type 0 1, method 0 1
--! import: id 0 16, ImportFrom 3 1, ImportDesc 0 1, ImportID 0 1, ImportType 0 1, Flags 0 1, MeterID 4 2
--! import: DateOfImport 5 1, DateFirstImported 6 1, DateLastImported 7 1
--! glucose: flag 0 1, importid 0 1
--! pressure: flag 0 1, importid 0 1
--! insulin: flag 0 1, importid 0 1
--! intakes: flag 0 1, importid 0 1
--! medicaldata: flag 0 1, importid 0 1
--! activities: flag 0 1, importid 0 1, intensity 0 1
--! eventlog: flag 0 1, importid 0 1
--! insulinpump: flag 0 1, importid 0 1
--! callback: WhatColumns 0 2 empty, Display 0 2 empty, WhatMarkers 0 2 empty
