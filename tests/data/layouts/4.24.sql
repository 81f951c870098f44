-- Layout 4.24, after 4.18. Events renumbered, protocol of events, defaults, the kind of tablet.

UPDATE db_info SET MinVersion=24;

ALTER TABLE template_insulin ADD COLUMN TypeOfEntry SHORT DEFAULT 0;
UPDATE insulin SET Event=71;
UPDATE glucose SET Event=Event+50 WHERE Event BETWEEN 20 AND 27;
UPDATE intakes SET Event=75;
UPDATE medicaldata SET Event=76;
UPDATE template_insulin SET Event=74;
-- From here on 20 to 27 are other events, which stay.
INSERT INTO glucose (vDate, vTime, [Value], Event) VALUES (#3/6/2009#, #07:00:00#, 95, 20);

CREATE TABLE [EventProt] ([ID] COUNTER, [vdate] DATETIME, [vtime] DATETIME, [event] SHORT, [Source] TEXT(100),
  [Comment] TEXT(255));
INSERT INTO EventProt (vdate, vtime, [event], [Source]) VALUES (#3/6/2009#, #10:00:00#, 5, 'Import');
CREATE TABLE [defaultinsulin] ([DefaultBolus] TEXT(100), [DefaultBasal] TEXT(100), [DefaultMix] TEXT(100),
  [DefaultRapid] TEXT(100), [BolusPercentage] SHORT DEFAULT 0);
INSERT INTO defaultinsulin (DefaultBolus, DefaultBasal, BolusPercentage) VALUES ('Insulin C', 'Insulin A', 30);
CREATE TABLE [defaultoad] ([DefaultOAD1] TEXT(100), [DefaultOAD2] TEXT(100), [DefaultOAD3] TEXT(100));
INSERT INTO defaultoad (DefaultOAD1) VALUES ('Metformin');

-- The memo is longer than the comment of a laboratory value.
ALTER TABLE day_info ADD COLUMN memo MEMO;
UPDATE day_info SET memo=
  'Ein langer Tag: 000 010 020 030 040 050 060 070 080 090 100 110 120 130 140 150 160 170 180 190 200 210 220 230 240
250 260 270 280 290 300 310 320 330 340 350 360 370 380 390 400 Ende' WHERE iWeight>0;
ALTER TABLE medicaldata ADD COLUMN OadType SHORT DEFAULT 0;
ALTER TABLE template_medicaldata ADD COLUMN OadType SHORT DEFAULT 0;
UPDATE medicaldata SET OadType=2;

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! EventProt: ID 0 16, vdate 0 1, vtime 0 1, event 0 1, Source 0 1 empty, Comment 0 1 empty
--! defaultinsulin: DefaultBolus 3 2, DefaultBasal 3 2, DefaultMix 3 2, DefaultRapid 3 2, BolusPercentage 0 1
--! defaultoad: DefaultOAD1 3 2, DefaultOAD2 3 2, DefaultOAD3 3 2
--! template_insulin: TypeOfEntry 0 1
--! day_info: memo 0 2 empty
--! medicaldata: OadType 0 1 empty
--! template_medicaldata: OadType 0 1 empty
