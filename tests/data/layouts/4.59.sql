-- Layout 4.59, after 4.58. Configurations of a pump.

UPDATE db_info SET MinVersion=59;

CREATE TABLE [PumpConfiguration] ([ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [itype] SHORT, [Data1] TEXT(255),
  [Data2] TEXT(255), [Data3] TEXT(255), [Comment] TEXT(255), [Desc] TEXT(255), [DeviceSerialID] TEXT(255),
  [DeviceID] SHORT DEFAULT 0, [importid] LONG DEFAULT 0, [flag] LONG DEFAULT 0);
CREATE INDEX [vDate] ON [PumpConfiguration] ([vDate]);
CREATE INDEX [vTime] ON [PumpConfiguration] ([vTime]);
INSERT INTO PumpConfiguration (vDate, vTime, itype, Data1) VALUES (#3/12/2009#, #09:00:00#, 1, 'Basal 1');

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! PumpConfiguration: ID 0 16, vDate 2 1, vTime 3 1, itype 4 1, Data1 0 2 empty, Data2 0 2 empty, Data3 0 2 empty
--! PumpConfiguration: Comment 7 2 empty, Desc 0 2 empty, DeviceSerialID 0 2 empty, DeviceID 0 1, importid 0 1
--! PumpConfiguration: flag 0 1
