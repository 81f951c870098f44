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
