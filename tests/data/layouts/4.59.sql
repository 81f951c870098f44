-- Layout 4.59, after 4.58. Configurations of a pump.

UPDATE db_info SET MinVersion=59;

CREATE TABLE [PumpConfiguration] ([ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [itype] SHORT, [Data1] TEXT(255),
  [Data2] TEXT(255), [Data3] TEXT(255), [Comment] TEXT(255), [Desc] TEXT(255), [DeviceSerialID] TEXT(255),
  [DeviceID] SHORT DEFAULT 0, [importid] LONG DEFAULT 0, [flag] LONG DEFAULT 0);
CREATE INDEX [vDate] ON [PumpConfiguration] ([vDate]);
CREATE INDEX [vTime] ON [PumpConfiguration] ([vTime]);
INSERT INTO PumpConfiguration (vDate, vTime, itype, Data1) VALUES (#3/12/2009#, #09:00:00#, 1, 'Basal 1');
