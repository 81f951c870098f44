-- Layout 4.53, after 4.45. Upkeep of the database, how the patient felt, medicines with a maker, the practice's lines.

UPDATE db_info SET MinVersion=53;

ALTER TABLE db_info ADD COLUMN LastCompressed DATETIME;
ALTER TABLE db_info ADD COLUMN LastArchive DATETIME;
ALTER TABLE db_info ADD COLUMN lAvailableData LONG;
ALTER TABLE db_info ADD COLUMN sAvailableData MEMO;
UPDATE db_info SET LastCompressed=#3/11/2009#, lAvailableData=3, sAvailableData='0,1 ';
ALTER TABLE day_info ADD COLUMN HealthState SHORT DEFAULT -1;
ALTER TABLE day_info ADD COLUMN PsychoState SHORT DEFAULT -1;
UPDATE day_info SET HealthState=2 WHERE iWeight>0;
INSERT INTO glucose (vDate, vTime, [Value], Bloodtype) VALUES (#3/11/2009#, #07:00:00#, 99, 0);
ALTER TABLE preferredMedicals ADD COLUMN manufacturer TEXT(50);
ALTER TABLE preferredMedicals ADD COLUMN Comment TEXT(255);
ALTER TABLE patdat ADD COLUMN A1 TEXT(255);
ALTER TABLE patdat ADD COLUMN A2 TEXT(255);
ALTER TABLE patdat ADD COLUMN A3 TEXT(255);
UPDATE patdat SET A1='Station 3';
ALTER TABLE callback ADD COLUMN [type] SHORT;
ALTER TABLE callback ADD COLUMN category SHORT DEFAULT 0;
UPDATE callback SET [type]=1, category=1;

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! db_info: LastCompressed 0 1 empty, LastArchive 0 1 empty, lAvailableData 0 1 empty, sAvailableData 0 2 empty
--! day_info: HealthState 0 1, PsychoState 0 1
--! preferredMedicals: manufacturer 0 2 empty, Comment 0 2 empty
--! patdat: A1 0 2 empty, A2 0 2 empty, A3 0 2 empty
--! callback: type 0 1, category 0 1
