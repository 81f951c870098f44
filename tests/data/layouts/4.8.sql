-- Layout 4.8, after 4.0. Password, ketones, memos, body fat, an order of the insulins.

UPDATE db_info SET MinVersion=8;

ALTER TABLE db_info ADD COLUMN [Password] TEXT(255);
UPDATE db_info SET [Password]='geheim ';
ALTER TABLE patdat_labs ADD COLUMN dKetones SINGLE;
ALTER TABLE patdat_labs ADD COLUMN vtime DATETIME;
UPDATE patdat_labs SET dKetones=0.4, vtime=#08:30:00# WHERE dHbA>0;

CREATE TABLE [Memos] ([ID] COUNTER, [Typ] SHORT DEFAULT 0, [vdate] DATETIME, [vtime] DATETIME, [mMemo] MEMO);
INSERT INTO Memos (Typ, vdate, vtime, mMemo) VALUES (1, #3/2/2009#, #20:00:00#, 'Pumpe gewechselt');
INSERT INTO Memos (Typ, vdate, vtime, mMemo) VALUES (1, #3/9/2009#, #20:05:00#,
  'Ein Memo, länger als ein Textfeld es aufnimmt: 000 010 020 030 040 050 060 070 080 090 100 110 120 130 140 150 160 170
180 190 200 210 220 230 240 250 260 270 280 290 Ende');

ALTER TABLE day_info ADD COLUMN dBodyFat SINGLE;
UPDATE day_info SET dBodyFat=21.5 WHERE iWeight>0;
ALTER TABLE preferredInsulin ADD COLUMN bSelectable YESNO DEFAULT True;
ALTER TABLE preferredInsulin ADD COLUMN iSortOrder SHORT DEFAULT 0;
UPDATE preferredInsulin SET bSelectable=True, iSortOrder=0 WHERE manufacturer='Alpha';
UPDATE preferredInsulin SET bSelectable=True, iSortOrder=1 WHERE manufacturer='Beta';
UPDATE preferredInsulin SET bSelectable=False, iSortOrder=2 WHERE manufacturer='Zeta';

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! Memos: ID 0 16, Typ 0 1, vdate 4 1, vtime 5 1, mMemo 0 2 empty
--! db_info: Password 0 2
--! patdat_labs: dKetones 14 1, vtime 4 1
--! day_info: dBodyFat 0 1
--! preferredInsulin: bSelectable 0 1, iSortOrder 0 1
