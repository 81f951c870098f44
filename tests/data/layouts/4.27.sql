-- Layout 4.27, after 4.24. Daytime zones, where the blood was taken, kinds of imports.

UPDATE db_info SET MinVersion=27;

ALTER TABLE patdat_setup ADD COLUMN BB_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BB_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AB_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AB_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BL_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BL_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AL_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AL_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BS_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BS_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AS_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AS_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BD_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BD_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AD_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN AD_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BedTime_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN BedTime_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ1_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ1_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ1_Desc TEXT(50);
ALTER TABLE patdat_setup ADD COLUMN UTZ2_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ2_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ2_Desc TEXT(50);
ALTER TABLE patdat_setup ADD COLUMN UTZ3_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ3_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ3_Desc TEXT(50);
ALTER TABLE patdat_setup ADD COLUMN UTZ4_From DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ4_Until DATETIME;
ALTER TABLE patdat_setup ADD COLUMN UTZ4_Desc TEXT(50);
UPDATE patdat_setup SET BB_From=#05:00:00#, BB_Until=#08:00:00#, UTZ1_From=#15:00:00#, UTZ1_Until=#15:30:00#,
  UTZ1_Desc='Kaffee';

-- Blood types of older rows are filled a version later.
ALTER TABLE glucose ADD COLUMN Bloodtype SHORT DEFAULT 0;
INSERT INTO glucose (vDate, vTime, [Value], Event, Bloodtype) VALUES (#3/7/2009#, #07:00:00#, 118, 19, 255);

ALTER TABLE imports ADD COLUMN ImportDesc TEXT(30);
ALTER TABLE imports ADD COLUMN ImportType SHORT DEFAULT 0;
DELETE * FROM imports;
INSERT INTO imports (ImportFrom, [method], MeterID, DateOfImport, ImportDesc, ImportType)
  VALUES (7, 'USB', 'M-2', #3/6/2009#, 'Messgerät', 1);
INSERT INTO imports (ImportFrom, MeterID, DateOfImport) VALUES (8, 'P-1', #3/8/2009#);

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! patdat_setup: BB_From 0 1, BB_Until 0 1, AB_From 0 1, AB_Until 0 1, BL_From 0 1, BL_Until 0 1, AL_From 0 1
--! patdat_setup: AL_Until 0 1, BS_From 0 1, BS_Until 0 1, AS_From 0 1, AS_Until 0 1, BD_From 0 1, BD_Until 0 1
--! patdat_setup: AD_From 0 1, AD_Until 0 1, BedTime_From 0 1, BedTime_Until 0 1, UTZ1_From 0 1, UTZ1_Until 0 1
--! patdat_setup: UTZ1_Desc 0 2 empty, UTZ2_From 0 1, UTZ2_Until 0 1, UTZ2_Desc 0 2 empty, UTZ3_From 0 1
--! patdat_setup: UTZ3_Until 0 1, UTZ3_Desc 0 2 empty, UTZ4_From 0 1, UTZ4_Until 0 1, UTZ4_Desc 0 2 empty
--! glucose: Bloodtype 0 1
--! imports: ImportDesc 0 1, ImportType 0 1
