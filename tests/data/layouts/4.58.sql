-- Layout 4.58, after 4.57. Pump data converted: durations in seconds, a summary of each day.

UPDATE db_info SET MinVersion=58;

CREATE TABLE [ip] ([ID] COUNTER, [vDate] DATETIME, [vHour] LONG DEFAULT -1, [TotalBolus] DOUBLE DEFAULT 0,
  [TotalBasal] DOUBLE DEFAULT 0, [PercentBolus] DOUBLE DEFAULT 0, [PercentBasal] DOUBLE DEFAULT 0,
  [NoBR] SHORT DEFAULT 0, [NoBls] SHORT DEFAULT 0);
CREATE INDEX [vDate] ON [ip] ([vDate]);
CREATE INDEX [vHour] ON [ip] ([vHour]);
INSERT INTO ip (vDate, TotalBolus, TotalBasal, NoBR, NoBls) VALUES (#3/1/2009#, 5.5, 18.4, 2, 1);
UPDATE insulinpump SET [desc]=str(val([desc])*60) WHERE [desc]<>'';

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! ip: ID 0 16, vDate 2 1, vHour 0 1, TotalBolus 0 1, TotalBasal 0 1, PercentBolus 0 1, PercentBasal 0 1, NoBR 0 1
--! ip: NoBls 0 1
