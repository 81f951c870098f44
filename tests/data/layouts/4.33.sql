-- Layout 4.33, after 4.27. Methods, smoking, marks, events of devices.

UPDATE db_info SET MinVersion=33;

UPDATE glucose SET Bloodtype=0 WHERE Bloodtype IS NULL;
ALTER TABLE patdat_labs ADD COLUMN [method] SHORT DEFAULT 0;
ALTER TABLE patdat_labs ADD COLUMN importid SHORT DEFAULT 0;
ALTER TABLE patdat ADD COLUMN smokerstatus SHORT DEFAULT 0;
UPDATE patdat_labs SET [method]=2 WHERE dHbA>0;
UPDATE patdat SET smokerstatus=1;
ALTER TABLE imports ADD COLUMN importid TEXT(30);
UPDATE imports SET importid='I-7' WHERE ImportFrom=7;
ALTER TABLE glucose ADD COLUMN mark SHORT DEFAULT 0;
UPDATE glucose SET mark=1 WHERE Bloodtype=255;

CREATE TABLE [eventlog] ([ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [event] SHORT,
  [typeofevent] SHORT DEFAULT 0, [Comment] TEXT(255), [DeviceSerialID] TEXT(255), [DeviceID] SHORT DEFAULT 0);
CREATE INDEX [vDate] ON [eventlog] ([vDate]);
CREATE INDEX [vTime] ON [eventlog] ([vTime]);
INSERT INTO eventlog (vDate, vTime, [event], DeviceSerialID) VALUES (#3/8/2009#, #11:00:00#, 3, 'SN-9');

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! eventlog: ID 0 16, vDate 2 1, vTime 3 1, event 4 1, typeofevent 0 1, Comment 7 2 empty, DeviceSerialID 0 2 empty
--! eventlog: DeviceID 0 1
--! patdat_labs: method 0 1, importid 0 1
--! patdat: smokerstatus 0 1
--! imports: importid 0 1
--! glucose: mark 0 1
