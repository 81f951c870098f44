-- Layout 4.0: the oldest that the upgrade knows. What a later layout added is not here yet.

CREATE TABLE [db_info] (
  [MajVersion] SHORT, [MinVersion] SHORT, [Desc] TEXT(255), [Type] SHORT, [LastBackup] DATETIME,
  [lastchanged] DATETIME, [Created] DATETIME);
CREATE TABLE [activities] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [value] SHORT, [desc] TEXT(255), [Event] SHORT,
  [Method] SHORT DEFAULT 0, [Comment] TEXT(255));
CREATE INDEX [vDate] ON [activities] ([vDate]);
CREATE INDEX [vTime] ON [activities] ([vTime]);
CREATE TABLE [glucose] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [Value] SHORT, [Event] SHORT, [Method] SHORT DEFAULT 0,
  [Comment] TEXT(255));
CREATE INDEX [vDate] ON [glucose] ([vDate]);
CREATE INDEX [vTime] ON [glucose] ([vTime]);
CREATE TABLE [pressure] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [BPSYS] SHORT DEFAULT 0, [BPDIA] SHORT DEFAULT 0,
  [BPMAP] SHORT DEFAULT 0, [BPPulse] SHORT DEFAULT 0, [Event] SHORT, [Method] SHORT DEFAULT 0, [Comment] TEXT(255));
CREATE INDEX [vDate] ON [pressure] ([vDate]);
CREATE INDEX [vTime] ON [pressure] ([vTime]);
CREATE TABLE [insulin] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [BolusIE] DOUBLE, [BasalIE] DOUBLE, [desc] TEXT(50), [Event] LONG,
  [Method] SHORT DEFAULT 0, [Comment] TEXT(255), [Rapid] YESNO DEFAULT False);
CREATE INDEX [vDate] ON [insulin] ([vDate]);
CREATE INDEX [vTime] ON [insulin] ([vTime]);
CREATE TABLE [intakes] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [Value] SINGLE DEFAULT 0, [desc] TEXT(255), [Event] LONG,
  [AdditionalInfo] LONG, [Comment] TEXT(255), [Method] SHORT DEFAULT 0);
CREATE INDEX [vDate] ON [intakes] ([vDate]);
CREATE INDEX [vTime] ON [intakes] ([vTime]);
CREATE TABLE [detailed_intakes] (
  [ID] COUNTER, [lID] LONG, [desc] TEXT(255), [BE] SINGLE DEFAULT 0, [KH] SINGLE, [KCal] SHORT DEFAULT -1,
  [Protein] SINGLE DEFAULT -1, [Chol] SINGLE DEFAULT -1, [Fett] SINGLE DEFAULT -1, [Wasser] SINGLE DEFAULT -1,
  [Ballast] SINGLE DEFAULT -1);
CREATE TABLE [medicaldata] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [value] SINGLE DEFAULT 0, [desc] TEXT(255), [Event] SHORT,
  [Method] SHORT DEFAULT 0, [Comment] TEXT(255));
CREATE INDEX [vDate] ON [medicaldata] ([vDate]);
CREATE INDEX [vTime] ON [medicaldata] ([vTime]);
CREATE TABLE [insulinpump] (
  [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [Amount] DOUBLE, [Type] LONG, [Profile] LONG, [Temp] LONG,
  [desc] TEXT(50), [Event] LONG, [Comment] TEXT(255));
CREATE INDEX [vDate] ON [insulinpump] ([vDate]);
CREATE INDEX [vTime] ON [insulinpump] ([vTime]);
CREATE INDEX [Type] ON [insulinpump] ([Type]);
CREATE TABLE [patdat] (
  [id] SHORT DEFAULT 0, [name] TEXT(50), [firstname] TEXT(50), [street] TEXT(50), [zip] TEXT(50), [city] TEXT(50),
  [phone] TEXT(50), [fax] TEXT(50), [email] TEXT(100), [number] TEXT(50), [gender] BYTE DEFAULT 0, [birthday] DATETIME,
  [height] SHORT DEFAULT 0, [typ] SHORT DEFAULT 0);
CREATE INDEX [id] ON [patdat] ([id]);
CREATE TABLE [patdat_doctor] (
  [ID] COUNTER, [Typ] SHORT DEFAULT 0, [vdate] DATETIME, [vtime] DATETIME, [Desc] TEXT(255), [mMemo] MEMO,
  [Method] SHORT DEFAULT 0, [bIsOk] YESNO DEFAULT True);
CREATE TABLE [patdat_labs] (
  [ID] COUNTER, [vdate] DATETIME, [sComment] TEXT(255), [dHbA] SINGLE DEFAULT -1, [dHbAc] SINGLE DEFAULT -1,
  [iChol] SHORT DEFAULT -1, [iAlbu] SHORT DEFAULT -1, [iHDL] SHORT DEFAULT -1, [iLDL] SHORT DEFAULT -1,
  [iTri] SHORT DEFAULT -1, [iCreatinin] SINGLE DEFAULT -1, [sKetones] TEXT(50));
CREATE TABLE [patdat_setup] (
  [BGTargetMax] SHORT, [BGTargetMin] SHORT, [BPTargetSysMax] SHORT DEFAULT 135, [BPTargetSysMin] SHORT DEFAULT 105,
  [BPTargetDiaMax] SHORT DEFAULT 90, [BPTargetDiaMin] SHORT DEFAULT 60, [BGHyper] SHORT, [BGHypo] SHORT,
  [BUPerDayMax] SINGLE DEFAULT -1, [KHPerDayMax] SHORT DEFAULT -1, [CholPerDayMax] SINGLE DEFAULT -1,
  [KCalPerDayMax] SHORT DEFAULT -1, [FatPerDayMax] SHORT DEFAULT -1, [ProtPerDayMax] SHORT DEFAULT -1,
  [TargetWeight] LONG DEFAULT 0);
CREATE TABLE [day_info] (
  [vDate] DATETIME, [iWeight] SINGLE, [bMenstruation] YESNO DEFAULT False, [bIllness] YESNO DEFAULT False,
  [bHospital] YESNO DEFAULT False, [bPumpInsulinChanged] YESNO DEFAULT False,
  [bPumpBatteryChanged] YESNO DEFAULT False, [bPumpNeedleChanged] YESNO DEFAULT False);
CREATE TABLE [healthpass] (
  [ID] COUNTER, [Quarter] SHORT, [Year] SHORT, [iWeight] SHORT DEFAULT -1, [iPressureSys] SHORT DEFAULT -1,
  [iPressureDia] SHORT DEFAULT -1, [iGlucoseMin_sober] SHORT DEFAULT -1, [iGlucoseMax_sober] SHORT DEFAULT -1,
  [iGlucoseMin] SHORT DEFAULT -1, [iGlucoseMax] SHORT DEFAULT -1, [dHba] SINGLE DEFAULT -1, [dHbac] SINGLE DEFAULT -1,
  [nBPMeasures] SHORT DEFAULT -1, [nBGMeasures] SHORT DEFAULT -1, [iAlbuminury] SHORT DEFAULT -1,
  [iCholesterol] SHORT DEFAULT -1, [iHypos] SHORT DEFAULT -1, [iHDL] SHORT DEFAULT -1, [iLDL] SHORT DEFAULT -1,
  [iTriglycerids] SHORT DEFAULT -1, [iCreatinin] SINGLE DEFAULT -1);
CREATE TABLE [reminder] (
  [ID] COUNTER, [vTime] DATETIME, [Action] SHORT DEFAULT 0, [days] TEXT(255));
CREATE TABLE [CustomEvents] (
  [EvNo] SHORT DEFAULT 0, [Event] TEXT(50));
CREATE TABLE [Comments] (
  [desc] TEXT(50));
CREATE TABLE [preferredInsulin] (
  [ID] COUNTER, [BolusIE] DOUBLE, [BasalIE] DOUBLE, [desc] TEXT(50), [manufacturer] TEXT(50), [Comment] TEXT(255),
  [Rapid] YESNO DEFAULT False);
CREATE TABLE [preferredMedicals] (
  [desc] TEXT(50), [type] SHORT DEFAULT 0);
CREATE TABLE [templates] (
  [TEMPLATE_ID] COUNTER, [desc] TEXT(255), [ApplyOn] TEXT(255), [Comment] MEMO, [Action] SHORT DEFAULT 1,
  [IsActive] YESNO DEFAULT True);
CREATE TABLE [template_activities] (
  [TEMPLATE_ID] SHORT DEFAULT 0, [ID] COUNTER, [vTime] DATETIME, [Value] DOUBLE, [desc] TEXT(255), [Event] LONG,
  [Comment] MEMO);
CREATE INDEX [TEMPLATE_ID] ON [template_activities] ([TEMPLATE_ID]);
CREATE TABLE [template_insulin] (
  [TEMPLATE_ID] SHORT DEFAULT 0, [ID] COUNTER, [vTime] DATETIME, [bolusie] DOUBLE, [basalie] DOUBLE, [desc] TEXT(50),
  [Event] LONG, [Method] LONG DEFAULT 0, [Comment] MEMO, [Rapid] YESNO DEFAULT False);
CREATE INDEX [PAT_ID] ON [template_insulin] ([TEMPLATE_ID]);
CREATE TABLE [template_intakes] (
  [TEMPLATE_ID] SHORT DEFAULT 0, [ID] COUNTER, [vDate] DATETIME, [vTime] DATETIME, [Value] SINGLE, [desc] TEXT(255),
  [Event] LONG, [AdditionalInfo] LONG, [Comment] MEMO);
CREATE INDEX [TEMPLATE_ID] ON [template_intakes] ([TEMPLATE_ID]);
CREATE TABLE [template_detailed_intakes] (
  [ID] COUNTER, [lID] LONG, [desc] TEXT(255), [BE] SINGLE DEFAULT 0, [KH] SINGLE, [KCal] SHORT DEFAULT -1,
  [Protein] SINGLE DEFAULT -1, [Chol] SINGLE DEFAULT -1, [Fett] SINGLE DEFAULT -1, [Wasser] SINGLE DEFAULT -1,
  [Ballast] SINGLE DEFAULT -1);
CREATE TABLE [template_medicaldata] (
  [TEMPLATE_ID] SHORT DEFAULT 0, [ID] COUNTER, [vTime] DATETIME, [Value] SINGLE DEFAULT 0, [desc] TEXT(255),
  [Event] LONG, [Comment] MEMO);
CREATE INDEX [TEMPLATE_ID] ON [template_medicaldata] ([TEMPLATE_ID]);
CREATE TABLE [Behandlungsprofil] (
  [id] COUNTER, [pat_id] LONG DEFAULT 0, [DATUM] DATETIME, [Quartal] TEXT(10), [GEWICHT] SINGLE DEFAULT -1,
  [GROESSE] SHORT DEFAULT -1, [DAUERDIAGNOSE1] TEXT(50), [DAUERDIAGNOSE1_DATUM] DATETIME, [DAUERDIAGNOSE1_ICD] TEXT(5),
  [DAUERDIAGNOSE2] TEXT(50), [DAUERDIAGNOSE2_DATUM] DATETIME, [DAUERDIAGNOSE2_ICD] TEXT(5), [DAUERDIAGNOSE3] TEXT(50),
  [DAUERDIAGNOSE3_DATUM] DATETIME, [DAUERDIAGNOSE3_ICD] TEXT(5), [RAUCHERANAMNESE] TEXT(1),
  [INSULINVERORDNUNG] TEXT(50), [INSULINVERORDNUNG_DATUM] DATETIME, [THERAPIEZIEL] SHORT DEFAULT 0,
  [SCHULUNG] SHORT DEFAULT 0, [SCHULUNG_PROGRAMM] SHORT DEFAULT 0, [SCHULUNG_INSTITUTION] SHORT DEFAULT 0,
  [SCHULUNG_DATUM] DATETIME, [SCHULUNG_KEINE_BEGR] SHORT DEFAULT 0, [KINDERWUNSCH] SHORT DEFAULT 0,
  [SCHWANGERSCHAFT] SHORT DEFAULT 0, [MITGLIED_SHG] SHORT DEFAULT 0, [UEBERWEISUNG_DATUM] DATETIME,
  [UEBERWEISUNG_VERANLASST] SHORT DEFAULT 0, [UEBERWEISUNG_KEINE_BEGR] SHORT DEFAULT 0,
  [UEBERWEISUNG_GRUND] SHORT DEFAULT 0, [ANG_PECT] TEXT(1), [CLAUDI] TEXT(1), [NEUR_BES] TEXT(1), [ORTHOSTASE] TEXT(1),
  [PRURITUS] TEXT(1), [POLYURIE] TEXT(1), [SEHBESCHWERDEN] TEXT(1), [POLYDIPSIE] TEXT(1), [BZ_SK_HW] SHORT DEFAULT -1,
  [BZ_SK_CO] TEXT(1), [UZ_SK_HW] SHORT DEFAULT -1, [UZ_SK_CO] TEXT(1), [LQ] TEXT(50), [LQ_SEEL] SHORT DEFAULT -1,
  [LQ_KOEPR] SHORT DEFAULT -1, [DIAB_TYP] SHORT DEFAULT 0, [DIAB_BEGINN] DATETIME, [DIAB_ICD] TEXT(50),
  [SENS_LINKS] TEXT(1), [SENS_RECHTS] TEXT(1), [STIGA_LINKS] SINGLE DEFAULT -1, [STIGA_RECHTS] SINGLE DEFAULT -1,
  [VIBRA_LINKS] TEXT(1), [VIBRA_RECHTS] TEXT(1), [BEINREFL_LINKS] TEXT(1), [BEINREFL_RECHTS] TEXT(1),
  [FUSSINSP_LINKS] TEXT(1), [FUSSINSP_RECHTS] TEXT(1), [FUSSPULS_LINKS] TEXT(1), [FUSSPULS_RECHTS] TEXT(1),
  [DOPPLER_LINKS] TEXT(1), [DOPPLER_RECHTS] TEXT(1), [VISUS_LINKS] SINGLE DEFAULT -1, [VISUS_RECHTS] SINGLE DEFAULT -1,
  [FUNDUS_V] TEXT(1), [FUNDUS_D] TEXT(1), [RR_SYST] SHORT DEFAULT -1, [RR_DIAS] SHORT DEFAULT -1,
  [GLUC_NUE] SHORT DEFAULT -1, [GLUC_PP] SHORT DEFAULT -1, [BHBAC] SINGLE DEFAULT -1, [SKREA] SINGLE DEFAULT -1,
  [SCHOL] SHORT DEFAULT -1, [SHDL] SHORT DEFAULT -1, [SLDL] SHORT DEFAULT -1, [STRIG] SHORT DEFAULT -1,
  [UGLUC] SHORT DEFAULT -1, [INS_PUMP] TEXT(1), [INS_PUMP_BEGINN] DATETIME, [OR_ANTID] TEXT(50), [OR_BIGUANID] TEXT(1),
  [OR_SULFONYL] TEXT(1), [OR_GLUCOSIDASE] TEXT(1), [OR_ANDERE] TEXT(1), [OR_SENSITIZER] TEXT(1),
  [OR_BIGUANID_BEGINN] DATETIME, [OR_SULFONYL_BEGINN] DATETIME, [OR_GLUCOSIDASE_BEGINN] DATETIME,
  [OR_ANDERE_BEGINN] DATETIME, [OR_SENSITIZER_BEGINN] DATETIME, [OR_BIGUANID_ENDE] DATETIME,
  [OR_SULFONYL_ENDE] DATETIME, [OR_GLUCOSIDASE_ENDE] DATETIME, [OR_ANDERE_ENDE] DATETIME,
  [OR_SENSITIZER_ENDE] DATETIME, [BLUTDR_S] TEXT(1) DEFAULT X, [BLUTDR_S_BEGINN] DATETIME,
  [BLUTDR_S_MEDIKATION] TEXT(50),
  [BLUTDR_A] TEXT(1), [BLUTDR_A_KOCHSALZ] TEXT(1), [BLUTDR_A_ERNAEHRUNG] TEXT(1), [BLUTDR_A_AKTIVITAET] TEXT(1),
  [BLUTDR_A_DIAET] TEXT(1), [BLUTDR_A_SONST] TEXT(1), [BLUTDR_A_KOCHSALZ_BEGINN] DATETIME,
  [BLUTDR_A_ERNAEHRUNG_BEGINN] DATETIME, [BLUTDR_A_AKTIVITAET_BEGINN] DATETIME, [BLUTDR_A_DIAET_BEGINN] DATETIME,
  [BLUTDR_A_SONST_BEGINN] DATETIME, [BLUTDR_A_BEGINN] DATETIME, [LIPID_S] TEXT(1) DEFAULT X,
  [LIPID_S_MEDIKATION] TEXT(50),
  [LIPID_S_BEGINN] DATETIME, [BE_ERN] TEXT(1), [BE_RAUCH] TEXT(1), [SP_HYP] TEXT(1), [GEW_RED] TEXT(1),
  [FUSS_ULC_LINKS] TEXT(1), [FUSS_ULC_RECHTS] TEXT(1), [AMPUTA_S_LINKS] SHORT DEFAULT -1,
  [AMPUTA_S_RECHTS] SHORT DEFAULT -1, [RETINOPA_LINKS] TEXT(1), [RETINOPA_RECHTS] TEXT(1),
  [RETINOPA_LINKS_S] SHORT DEFAULT -1, [RETINOPA_RECHTS_S] SHORT DEFAULT -1, [ERBLIND_LINKS] TEXT(1),
  [ERBLIND_RECHTS] TEXT(1), [HERZ_INF] TEXT(1), [APOPLEX] TEXT(1), [NEUROP_A] TEXT(1), [NEUROP_P] TEXT(1),
  [KETOAZID] SHORT DEFAULT -1, [HYPGLY_S] SHORT DEFAULT -1, [NI_INS_T] SHORT DEFAULT -1, [KH_EINW] SHORT DEFAULT -1,
  [KH_TAGE] SHORT DEFAULT -1, [AU_TAGE] SHORT DEFAULT -1, [LQ_EIN] TEXT(1), [STATFALL] TEXT(1),
  [PErcentComplete] SHORT);
CREATE INDEX [HYPGLY_S] ON [Behandlungsprofil] ([NI_INS_T]);
CREATE INDEX [id] ON [Behandlungsprofil] ([id]);
CREATE INDEX [KETOAZID] ON [Behandlungsprofil] ([KETOAZID]);
CREATE INDEX [KETOAZID1] ON [Behandlungsprofil] ([HYPGLY_S]);
CREATE INDEX [OR_ANTID] ON [Behandlungsprofil] ([OR_ANTID]);
CREATE INDEX [OR_ANTID1] ON [Behandlungsprofil] ([OR_BIGUANID_BEGINN]);
CREATE INDEX [OR_ANTID2] ON [Behandlungsprofil] ([OR_BIGUANID]);
CREATE INDEX [OR_BIGUANID] ON [Behandlungsprofil] ([OR_SULFONYL]);
CREATE INDEX [OR_BIGUANID_BEGINN] ON [Behandlungsprofil] ([OR_SULFONYL_BEGINN]);
CREATE INDEX [OR_BIGUANID_BEGINN1] ON [Behandlungsprofil] ([OR_GLUCOSIDASE_BEGINN]);
CREATE INDEX [OR_BIGUANID_BEGINN2] ON [Behandlungsprofil] ([OR_ANDERE_BEGINN]);
CREATE INDEX [OR_BIGUANID_BEGINN3] ON [Behandlungsprofil] ([OR_SENSITIZER_BEGINN]);
CREATE INDEX [OR_BIGUANID1] ON [Behandlungsprofil] ([OR_GLUCOSIDASE]);
CREATE INDEX [OR_GLUCOSIDASE] ON [Behandlungsprofil] ([OR_ANDERE]);
CREATE INDEX [OR_GLUCOSIDASE1] ON [Behandlungsprofil] ([OR_SENSITIZER]);
CREATE INDEX [pat_id] ON [Behandlungsprofil] ([pat_id]);
CREATE INDEX [PrimaryKey] ON [Behandlungsprofil] ([id]) WITH PRIMARY;
CREATE TABLE [Labordefinitionen] (
  [Field] TEXT(20), [LongDesc] TEXT(50), [BDTKEY] TEXT(20), [UNIT] SHORT DEFAULT 0, [DisplayUnit] SHORT DEFAULT 0,
  [RangeFrom] SINGLE DEFAULT -1, [RangeUntil] SINGLE DEFAULT -1, [CriticalThreshold] SINGLE DEFAULT -1,
  [Display] YESNO DEFAULT True, [Comments] TEXT(200));
CREATE TABLE [labdefs] (
  [ID] COUNTER, [type] SHORT DEFAULT -1, [unit] SHORT DEFAULT -1, [displayunit] SHORT DEFAULT -1, [field] TEXT(255),
  [units_allowed] SHORT, [LongDesc] TEXT(255), [BDTKey] TEXT(255), [rangefrom] SINGLE DEFAULT 0,
  [rangeuntil] SINGLE DEFAULT 0, [criticalThreshold] SINGLE DEFAULT 0, [sComment] TEXT(255));
CREATE TABLE [imports] (
  [id] COUNTER, [ImportFrom] SHORT DEFAULT 0, [method] TEXT(50), [MeterID] TEXT(50), [DateOfImport] DATETIME,
  [DateFirstImported] DATETIME, [DateLastImported] DATETIME);

INSERT INTO db_info (MajVersion, MinVersion, [Desc], [Type], LastBackup, lastchanged, Created)
  VALUES (4, 0, 'Diabetestagebuch VANTRIX', 3, #1/31/2009#, #2/1/2009 10:15:00#, #5/20/2001#);
INSERT INTO patdat (id, name, firstname, city, gender, birthday, height, typ)
  VALUES (1, 'Müller', 'Jörg', 'Köln', 1, #4/30/1961#, 178, 1);
INSERT INTO patdat_setup (BGTargetMax, BGTargetMin, BGHyper, BGHypo, TargetWeight) VALUES (150, 70, 180, 60, 78);
INSERT INTO patdat_doctor (Typ, vdate, vtime, [Desc], mMemo) VALUES (2, #2/3/2009#, #09:00:00#, 'Befund', 'o. B.');

-- Events 20 to 27 get other numbers later, those beside them keep theirs.
INSERT INTO glucose (vDate, vTime, [Value], Event, Comment) VALUES (#3/1/2009#, #07:00:00#, 98, 19, 'nüchtern');
INSERT INTO glucose (vDate, vTime, [Value], Event) VALUES (#3/1/2009#, #09:30:00#, 164, 20);
INSERT INTO glucose (vDate, vTime, [Value], Event) VALUES (#3/1/2009#, #12:00:00#, 121, 27);
INSERT INTO glucose (vDate, vTime, [Value], Event) VALUES (#3/1/2009#, #22:00:00#, 140, 28);
INSERT INTO glucose (vDate, vTime, [Value]) VALUES (#3/2/2009#, #07:10:00#, 104);
INSERT INTO insulin (vDate, vTime, BolusIE, BasalIE, [desc], Event, Rapid)
  VALUES (#3/1/2009#, #12:10:00#, 6.5, 0, 'Normal', 21, True);
INSERT INTO intakes (vDate, vTime, [Value], [desc], Event) VALUES (#3/1/2009#, #12:15:00#, 4.5, 'Brot', 25);
INSERT INTO activities (vDate, vTime, [value], [desc], Event) VALUES (#3/1/2009#, #17:00:00#, 45, 'Laufen', 22);
INSERT INTO medicaldata (vDate, vTime, [value], [desc], Event) VALUES (#3/1/2009#, #08:00:00#, 850, 'Metformin', 26);
INSERT INTO pressure (vDate, vTime, BPSYS, BPDIA, Event) VALUES (#3/1/2009#, #07:05:00#, 128, 82, 20);
INSERT INTO detailed_intakes (lID, [desc], BE, KCal) VALUES (1, 'Roggenbrot', 2, 120);
INSERT INTO day_info (vDate, iWeight, bIllness) VALUES (#3/1/2009#, 81.5, True);
INSERT INTO day_info (vDate, iWeight) VALUES (#3/2/2009#, 0);

-- Laboratory visits: the second has one value only.
INSERT INTO patdat_labs (vdate, sComment, dHbA, dHbAc, iChol, iAlbu, iHDL, iLDL, iTri, iCreatinin, sKetones)
  VALUES (#2/10/2009#, 'Jahreskontrolle', 8.1, 7.4, 201, 18, 44, 130, 166, 0.9, 'neg.');
INSERT INTO patdat_labs (vdate, dHbAc) VALUES (#5/11/2009#, 6.9);
INSERT INTO labdefs ([type], [unit], [field], rangefrom, rangeuntil) VALUES (11, 2, 'dHbAc', 4.5, 6.5);

-- Twelve days of pump data. The first entry of a calculated profile and one marked -1 are no rates of the user's.
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  VALUES (#3/1/2009#, #06:00:00#, 0.8, 1, '960', 0, 'Profil 1');
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  VALUES (#3/1/2009#, #22:00:00#, 0.4, 1, '480', 0, 'Profil 1');
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], Event) VALUES (#3/1/2009#, #12:10:00#, 5.5, 2, 110);
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  SELECT vDate+1, vTime, Amount, [Type], [desc], Event, Comment FROM insulinpump;
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  SELECT vDate+2, vTime, Amount, [Type], [desc], Event, Comment FROM insulinpump;
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  SELECT vDate+4, vTime, Amount, [Type], [desc], Event, Comment FROM insulinpump;
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  SELECT vDate+4, vTime, Amount, [Type], [desc], Event, Comment FROM insulinpump WHERE vDate>=#3/5/2009#;
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event, Comment)
  VALUES (#3/3/2009#, #23:00:00#, 1.2, 1, '60', 0, 'calc');
INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Event)
  VALUES (#3/5/2009#, #07:00:00#, 3, 1, '-1', 0);

INSERT INTO preferredInsulin (BolusIE, BasalIE, [desc], manufacturer) VALUES (1, 0, 'Insulin C', 'Zeta');
INSERT INTO preferredInsulin (BolusIE, BasalIE, [desc], manufacturer) VALUES (0, 1, 'Insulin A', 'Alpha');
INSERT INTO preferredInsulin (BolusIE, BasalIE, [desc], manufacturer) VALUES (30, 70, 'Insulin B', 'Beta');
INSERT INTO preferredMedicals ([desc], [type]) VALUES ('Metformin', 1);
INSERT INTO templates ([desc], ApplyOn) VALUES ('Werktag', '2,3,4,5,6');
INSERT INTO template_insulin (TEMPLATE_ID, vTime, bolusie, basalie, [desc], Event)
  VALUES (1, #07:00:00#, 6, 0, 'Normal', 24);
INSERT INTO healthpass ([Quarter], [Year], iWeight, dHbac) VALUES (1, 2009, 82, 7.4);
INSERT INTO reminder (vTime, [Action], days) VALUES (#22:00:00#, 1, '1,7');
INSERT INTO CustomEvents (EvNo, [Event]) VALUES (40, 'Sauna');
INSERT INTO Comments ([desc]) VALUES ('vergessen');
INSERT INTO Behandlungsprofil (pat_id, DATUM, Quartal, LIPID_S) VALUES (1, #3/31/2009#, '1/2009', 'J');
INSERT INTO Labordefinitionen ([Field], LongDesc, BDTKEY, UNIT) VALUES ('SKREA', 'Kreatinin', 'KREA', 1);
INSERT INTO imports (ImportFrom, [method], MeterID, DateOfImport) VALUES (4, 'seriell', 'M-1', #2/1/2009#);

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! db_info: MajVersion 0 2, MinVersion 0 2, Desc 2 2, Type 0 2, LastBackup 0 1, lastchanged 4 1, Created 4 1
--! activities: ID 0 16, vDate 2 1, vTime 3 1, value 4 1, desc 5 2 empty, Event 6 1, Method 7 1, Comment 8 2 empty
--! glucose: ID 0 16, vDate 2 1, vTime 3 1, Value 4 1, Event 5 1, Method 6 1, Comment 7 2 empty
--! pressure: ID 0 16, vDate 2 1, vTime 3 1, BPSYS 4 1, BPDIA 4 1, BPMAP 4 1, BPPulse 4 1, Event 5 1, Method 6 1
--! pressure: Comment 7 2 empty
--! insulin: ID 0 16, vDate 2 1, vTime 3 1, BolusIE 4 1, BasalIE 5 1, desc 6 2 empty, Event 7 1, Method 8 1
--! insulin: Comment 9 2 empty, Rapid 0 2
--! intakes: ID 0 16, vDate 2 1, vTime 3 1, Value 4 1, desc 5 2 empty, Event 6 1, AdditionalInfo 7 1
--! intakes: Comment 8 2 empty, Method 0 1
--! detailed_intakes: ID 0 16, lID 1 1, desc 2 2 empty, BE 3 1, KH 4 1, KCal 4 1, Protein 4 1, Chol 4 1, Fett 4 1
--! detailed_intakes: Wasser 4 1, Ballast 4 1
--! medicaldata: ID 0 16, vDate 2 1, vTime 3 1, value 4 1, desc 5 2 empty, Event 6 1, Method 7 1, Comment 8 2 empty
--! insulinpump: ID 0 16, vDate 2 1, vTime 3 1, Amount 4 1, Type 7 1, Profile 7 1, Temp 7 1, desc 6 2 empty
--! insulinpump: Event 7 1, Comment 9 2 empty
--! patdat: id 1 1, name 2 2, firstname 3 2, street 4 2 empty, zip 5 2 empty, city 6 2 empty, phone 7 2 empty
--! patdat: fax 8 2 empty, email 9 2 empty, number 10 2 empty, gender 11 1, birthday 12 1, height 13 1, typ 0 1
--! patdat_doctor: ID 0 16, Typ 0 1, vdate 4 1, vtime 5 1, Desc 0 2 empty, mMemo 0 2 empty, Method 0 1, bIsOk 0 1
--! patdat_labs: ID 0 16, vdate 0 1, sComment 0 2 empty, dHbA 0 1, dHbAc 0 1, iChol 0 1, iAlbu 0 1, iHDL 0 1
--! patdat_labs: iLDL 0 1, iTri 0 1, iCreatinin 0 1, sKetones 11 2 empty
--! patdat_setup: BGTargetMax 0 1, BGTargetMin 0 1, BPTargetSysMax 0 1, BPTargetSysMin 0 1, BPTargetDiaMax 0 1
--! patdat_setup: BPTargetDiaMin 0 1, BGHyper 5 1, BGHypo 6 1, BUPerDayMax 0 1, KHPerDayMax 0 1, CholPerDayMax 0 1
--! patdat_setup: KCalPerDayMax 0 1, FatPerDayMax 0 1, ProtPerDayMax 0 1, TargetWeight 0 1
--! day_info: vDate 2 1, iWeight 0 1, bMenstruation 0 1, bIllness 0 1, bHospital 0 1, bPumpInsulinChanged 0 1
--! day_info: bPumpBatteryChanged 0 1, bPumpNeedleChanged 0 1
--! healthpass: ID 0 16, Quarter 0 1, Year 0 1, iWeight 0 1, iPressureSys 0 1, iPressureDia 0 1
--! healthpass: iGlucoseMin_sober 0 1, iGlucoseMax_sober 0 1, iGlucoseMin 0 1, iGlucoseMax 0 1, dHba 0 1, dHbac 0 1
--! healthpass: nBPMeasures 0 1, nBGMeasures 0 1, iAlbuminury 0 1, iCholesterol 0 1, iHypos 0 1, iHDL 0 1, iLDL 0 1
--! healthpass: iTriglycerids 0 1, iCreatinin 0 1
--! reminder: ID 0 16, vTime 0 1, Action 0 1, days 5 2 empty
--! CustomEvents: EvNo 0 2 empty, Event 0 2 empty
--! Comments: desc 0 2 empty
--! preferredInsulin: ID 0 16, BolusIE 0 1, BasalIE 0 1, desc 0 2, manufacturer 0 2 empty, Comment 7 2 empty
--! preferredInsulin: Rapid 0 2
--! preferredMedicals: desc 0 2, type 0 1
--! templates: TEMPLATE_ID 0 16, desc 0 2 empty, ApplyOn 0 2 empty, Comment 0 2 empty, Action 0 2, IsActive 0 2
--! template_activities: TEMPLATE_ID 0 1, ID 0 16, vTime 3 1, Value 4 1, desc 5 2 empty, Event 6 1
--! template_activities: Comment 8 2 empty
--! template_insulin: TEMPLATE_ID 2 1, ID 0 16, vTime 3 1, bolusie 4 1, basalie 5 1, desc 6 2 empty, Event 7 1
--! template_insulin: Method 8 1, Comment 9 2 empty, Rapid 0 2
--! template_intakes: TEMPLATE_ID 1 1, ID 0 16, vDate 3 1, vTime 4 1, Value 5 1, desc 6 2 empty, Event 7 1
--! template_intakes: AdditionalInfo 8 1, Comment 9 2 empty
--! template_detailed_intakes: ID 0 16, lID 1 1, desc 2 2 empty, BE 3 1, KH 4 1, KCal 4 1, Protein 4 1, Chol 4 1
--! template_detailed_intakes: Fett 4 1, Wasser 4 1, Ballast 4 1
--! template_medicaldata: TEMPLATE_ID 0 1, ID 0 16, vTime 3 1, Value 4 1, desc 5 2 empty, Event 6 1
--! template_medicaldata: Comment 8 2 empty
--! Behandlungsprofil: id 0 17, pat_id 0 1, DATUM 0 1, Quartal 0 2, GEWICHT 0 1, GROESSE 0 1
--! Behandlungsprofil: DAUERDIAGNOSE1 0 2 empty, DAUERDIAGNOSE1_DATUM 0 1, DAUERDIAGNOSE1_ICD 0 2 empty
--! Behandlungsprofil: DAUERDIAGNOSE2 0 2 empty, DAUERDIAGNOSE2_DATUM 0 1, DAUERDIAGNOSE2_ICD 0 2 empty
--! Behandlungsprofil: DAUERDIAGNOSE3 0 2 empty, DAUERDIAGNOSE3_DATUM 0 1, DAUERDIAGNOSE3_ICD 0 2 empty
--! Behandlungsprofil: RAUCHERANAMNESE 0 2, INSULINVERORDNUNG 0 2 empty, INSULINVERORDNUNG_DATUM 0 1
--! Behandlungsprofil: THERAPIEZIEL 0 1, SCHULUNG 0 1, SCHULUNG_PROGRAMM 0 1, SCHULUNG_INSTITUTION 0 1
--! Behandlungsprofil: SCHULUNG_DATUM 0 1, SCHULUNG_KEINE_BEGR 0 1, KINDERWUNSCH 0 1, SCHWANGERSCHAFT 0 1
--! Behandlungsprofil: MITGLIED_SHG 0 1, UEBERWEISUNG_DATUM 0 1, UEBERWEISUNG_VERANLASST 0 1
--! Behandlungsprofil: UEBERWEISUNG_KEINE_BEGR 0 1, UEBERWEISUNG_GRUND 0 1, ANG_PECT 0 2 empty, CLAUDI 0 2 empty
--! Behandlungsprofil: NEUR_BES 0 2 empty, ORTHOSTASE 0 2 empty, PRURITUS 0 2 empty, POLYURIE 0 2 empty
--! Behandlungsprofil: SEHBESCHWERDEN 0 2 empty, POLYDIPSIE 0 2 empty, BZ_SK_HW 0 1, BZ_SK_CO 0 2 empty
--! Behandlungsprofil: UZ_SK_HW 0 1, UZ_SK_CO 0 2 empty, LQ 0 2 empty, LQ_SEEL 0 1, LQ_KOEPR 0 1, DIAB_TYP 0 1
--! Behandlungsprofil: DIAB_BEGINN 0 1, DIAB_ICD 0 2 empty, SENS_LINKS 0 2 empty, SENS_RECHTS 0 2 empty
--! Behandlungsprofil: STIGA_LINKS 0 2, STIGA_RECHTS 0 2, VIBRA_LINKS 0 2 empty, VIBRA_RECHTS 0 2 empty
--! Behandlungsprofil: BEINREFL_LINKS 0 2 empty, BEINREFL_RECHTS 0 2 empty, FUSSINSP_LINKS 0 2 empty
--! Behandlungsprofil: FUSSINSP_RECHTS 0 2 empty, FUSSPULS_LINKS 0 2 empty, FUSSPULS_RECHTS 0 2 empty
--! Behandlungsprofil: DOPPLER_LINKS 0 2 empty, DOPPLER_RECHTS 0 2 empty, VISUS_LINKS 0 1, VISUS_RECHTS 0 1
--! Behandlungsprofil: FUNDUS_V 0 2 empty, FUNDUS_D 0 2 empty, RR_SYST 0 1, RR_DIAS 0 1, GLUC_NUE 0 1, GLUC_PP 0 1
--! Behandlungsprofil: BHBAC 0 1, SKREA 0 1, SCHOL 0 1, SHDL 0 1, SLDL 0 1, STRIG 0 1, UGLUC 0 1, INS_PUMP 0 2 empty
--! Behandlungsprofil: INS_PUMP_BEGINN 0 1, OR_ANTID 0 2 empty, OR_BIGUANID 0 2 empty, OR_SULFONYL 0 2 empty
--! Behandlungsprofil: OR_GLUCOSIDASE 0 2 empty, OR_ANDERE 0 2 empty, OR_SENSITIZER 0 2 empty
--! Behandlungsprofil: OR_BIGUANID_BEGINN 0 1, OR_SULFONYL_BEGINN 0 1, OR_GLUCOSIDASE_BEGINN 0 1
--! Behandlungsprofil: OR_ANDERE_BEGINN 0 1, OR_SENSITIZER_BEGINN 0 1, OR_BIGUANID_ENDE 0 1, OR_SULFONYL_ENDE 0 1
--! Behandlungsprofil: OR_GLUCOSIDASE_ENDE 0 1, OR_ANDERE_ENDE 0 1, OR_SENSITIZER_ENDE 0 1, BLUTDR_S 0 2
--! Behandlungsprofil: BLUTDR_S_BEGINN 0 1, BLUTDR_S_MEDIKATION 0 2 empty, BLUTDR_A 0 2 empty
--! Behandlungsprofil: BLUTDR_A_KOCHSALZ 0 2 empty, BLUTDR_A_ERNAEHRUNG 0 2 empty, BLUTDR_A_AKTIVITAET 0 2 empty
--! Behandlungsprofil: BLUTDR_A_DIAET 0 2 empty, BLUTDR_A_SONST 0 2 empty, BLUTDR_A_KOCHSALZ_BEGINN 0 1
--! Behandlungsprofil: BLUTDR_A_ERNAEHRUNG_BEGINN 0 1, BLUTDR_A_AKTIVITAET_BEGINN 0 1, BLUTDR_A_DIAET_BEGINN 0 1
--! Behandlungsprofil: BLUTDR_A_SONST_BEGINN 0 1, BLUTDR_A_BEGINN 0 1, LIPID_S 0 2 empty
--! Behandlungsprofil: LIPID_S_MEDIKATION 0 2 empty, LIPID_S_BEGINN 0 1, BE_ERN 0 2 empty, BE_RAUCH 0 2 empty
--! Behandlungsprofil: SP_HYP 0 2 empty, GEW_RED 0 2 empty, FUSS_ULC_LINKS 0 2 empty, FUSS_ULC_RECHTS 0 2 empty
--! Behandlungsprofil: AMPUTA_S_LINKS 0 1, AMPUTA_S_RECHTS 0 1, RETINOPA_LINKS 0 2 empty, RETINOPA_RECHTS 0 2 empty
--! Behandlungsprofil: RETINOPA_LINKS_S 0 1, RETINOPA_RECHTS_S 0 1, ERBLIND_LINKS 0 2 empty
--! Behandlungsprofil: ERBLIND_RECHTS 0 2 empty, HERZ_INF 0 2 empty, APOPLEX 0 2 empty, NEUROP_A 0 2 empty
--! Behandlungsprofil: NEUROP_P 0 2 empty, KETOAZID 0 1, HYPGLY_S 0 1, NI_INS_T 0 1, KH_EINW 0 1, KH_TAGE 0 1
--! Behandlungsprofil: AU_TAGE 0 1, LQ_EIN 0 2 empty, STATFALL 0 2 empty, PErcentComplete 0 1
--! Labordefinitionen: Field 0 2, LongDesc 0 2, BDTKEY 0 2, UNIT 0 1, DisplayUnit 0 1, RangeFrom 0 1, RangeUntil 0 1
--! Labordefinitionen: CriticalThreshold 0 1, Display 0 1, Comments 0 2
--! labdefs: ID 0 16, type 0 1, unit 0 1, displayunit 0 1, field 0 1, units_allowed 0 1, LongDesc 0 1, BDTKey 0 1
--! labdefs: rangefrom 0 1, rangeuntil 0 1, criticalThreshold 0 1, sComment 0 2 empty
--! imports: id 0 16, ImportFrom 3 1, MeterID 4 2, DateOfImport 5 1, DateFirstImported 6 1, DateLastImported 7 1
