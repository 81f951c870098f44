-- Layout 4.57, after 4.53. Memos among the saved views, therapy, events of the program, step counters.

UPDATE db_info SET MinVersion=57;

INSERT INTO callback (vDate, [desc], [type], category) SELECT vdate, left('Memo^' & mMemo, 255), -99, 0 FROM Memos;
ALTER TABLE patdat ADD COLUMN therapy SHORT DEFAULT 0;
UPDATE patdat SET therapy=3;
CREATE TABLE [sysevents] ([ID] COUNTER, [vDate] DATETIME, [event] SHORT DEFAULT 0, [Comment] TEXT(255),
  [param1] TEXT(255), [param2] TEXT(255), [flag] LONG DEFAULT 0);
CREATE INDEX [vDate] ON [sysevents] ([vDate]);
INSERT INTO sysevents (vDate, [event], param1) VALUES (#3/12/2009 08:00:00#, 1, 'Start');
CREATE TABLE [steps] ([ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [total_ns] SHORT, [total_sns] SHORT,
  [total_tns] SHORT, [total_cns] SHORT, [total_fatbu] SHORT, [total_distance] SHORT, [intensity] SHORT DEFAULT 0,
  [Event] SHORT, [RSType] SHORT DEFAULT 0, [Comment] TEXT(255), [importid] LONG DEFAULT 0, [flag] LONG DEFAULT 0);
CREATE INDEX [vDate] ON [steps] ([vDate]);
CREATE INDEX [vTime] ON [steps] ([vTime]);
INSERT INTO steps (vDate, vTime, total_ns) VALUES (#3/12/2009#, #21:00:00#, 8123);

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! sysevents: ID 0 16, vDate 2 1, event 4 1, Comment 7 2 empty, param1 0 2 empty, param2 0 2 empty, flag 0 1
--! steps: ID 0 16, vDate 2 1, vTime 3 1, total_ns 0 1, total_sns 0 1, total_tns 0 1, total_cns 0 1, total_fatbu 0 1
--! steps: total_distance 0 1, intensity 4 1, Event 6 1, RSType 7 1, Comment 8 2 empty, importid 0 1, flag 0 1
--! patdat: therapy 0 1
