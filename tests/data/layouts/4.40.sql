-- Layout 4.40, after 4.33. What devices say, saved views, the therapy plan. 40 itself is no step.

UPDATE db_info SET MinVersion=40;

ALTER TABLE activities ADD COLUMN extdata TEXT(30);
ALTER TABLE glucose ADD COLUMN extdata TEXT(30);
ALTER TABLE insulin ADD COLUMN extdata TEXT(30);
ALTER TABLE pressure ADD COLUMN extdata TEXT(30);
ALTER TABLE intakes ADD COLUMN extdata TEXT(30);
ALTER TABLE medicaldata ADD COLUMN extdata TEXT(30);
UPDATE glucose SET extdata='Gerät 7' WHERE Bloodtype=255;

CREATE TABLE [callback] ([ID] COUNTER, [vDate] DATETIME, [vDateFrom] DATETIME, [vDateUntil] DATETIME,
  [vTimeFrom] DATETIME, [vTimeuntil] DATETIME, [days] TEXT(255), [crit] TEXT(255), [user] TEXT(255), [display] YESNO,
  [pos] LONG, [desc] TEXT(255), [control] TEXT(255));
CREATE INDEX [vDate] ON [callback] ([vDate]);
INSERT INTO callback (vDate, [desc], [display], pos) VALUES (#3/10/2009#, 'Woche 10', True, 2);

ALTER TABLE templates ADD COLUMN [type] SHORT DEFAULT 0;
CREATE TABLE [therapieplan] ([ID] COUNTER, [vDate] DATETIME, [desc] TEXT(255), [Type] SHORT, [Comment] TEXT(255));
CREATE INDEX [vDate] ON [therapieplan] ([vDate]);
CREATE TABLE [therapieplan_details] ([ID] COUNTER, [lID] SHORT DEFAULT 0, [desc] TEXT(255), [ItemType] SHORT,
  [ItemValue] DOUBLE DEFAULT 0, [TimeSlot] SHORT DEFAULT 0, [Comment] TEXT(255));
CREATE INDEX [lID] ON [therapieplan_details] ([lID]);
INSERT INTO therapieplan (vDate, [desc]) VALUES (#3/10/2009#, 'Frühjahr');
INSERT INTO therapieplan_details (lID, [desc], ItemType, ItemValue, TimeSlot) VALUES (1, 'Insulin C', 0, 6.5, 1);

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! callback: ID 0 16, vDate 0 1, vDateFrom 0 1, vDateUntil 2 1, vTimeFrom 0 1, vTimeuntil 0 1, days 0 2 empty
--! callback: crit 0 2 empty, user 0 2 empty, display 0 2 empty, pos 0 1, desc 0 2 empty, control 0 2 empty
--! therapieplan: ID 0 16, vDate 2 1, desc 5 2 empty, Type 6 1, Comment 8 2 empty
--! therapieplan_details: ID 0 16, lID 0 1, desc 5 2 empty, ItemType 0 1, ItemValue 0 1, TimeSlot 0 1
--! therapieplan_details: Comment 8 2 empty
--! activities: extdata 0 2 empty
--! glucose: extdata 0 2 empty
--! insulin: extdata 0 2 empty
--! pressure: extdata 0 2 empty
--! intakes: extdata 0 2 empty
--! medicaldata: extdata 0 2 empty
--! templates: type 0 1
