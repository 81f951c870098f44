-- Layout 4.45, after 4.44. One row a laboratory value.

UPDATE db_info SET MinVersion=45;

DROP TABLE labdefs;
CREATE TABLE [labdefs] ([ID] COUNTER, [type] SHORT DEFAULT -1, [unit] SHORT DEFAULT -1, [displayunit] SHORT DEFAULT -1,
  [field] TEXT(255), [units_allowed] SHORT, [LongDesc] TEXT(255), [BDTKey] TEXT(255), [rangefrom] SINGLE DEFAULT 0,
  [rangeuntil] SINGLE DEFAULT 0, [criticalThreshold] SINGLE DEFAULT 0, [sComment] TEXT(255));
INSERT INTO labdefs ([type], [unit], displayunit, [field], LongDesc, rangefrom, rangeuntil)
  VALUES (11, 2, 2, 'dHbAc', 'HBA1c', 4.1, 6.2);

INSERT INTO labvalues ([type], [value], vdate, sComment)
  SELECT 1, iWeight, vDate, left(memo, 255) FROM day_info WHERE iWeight>0;
INSERT INTO labvalues ([type], [value], vdate, sComment)
  SELECT 2, dBodyFat, vDate, left(memo, 255) FROM day_info WHERE dBodyFat>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 10, dHbA, vdate, vtime, [method], sComment FROM patdat_labs WHERE dHbA>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 11, dHbAc, vdate, vtime, [method], sComment FROM patdat_labs WHERE dHbAc>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 12, iChol, vdate, vtime, [method], sComment FROM patdat_labs WHERE iChol>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 13, iAlbu, vdate, vtime, [method], sComment FROM patdat_labs WHERE iAlbu>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 14, iHDL, vdate, vtime, [method], sComment FROM patdat_labs WHERE iHDL>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 15, iLDL, vdate, vtime, [method], sComment FROM patdat_labs WHERE iLDL>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 16, iTri, vdate, vtime, [method], sComment FROM patdat_labs WHERE iTri>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 17, iCreatinin, vdate, vtime, [method], sComment FROM patdat_labs WHERE iCreatinin>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 18, dKetones, vdate, vtime, [method], sComment FROM patdat_labs WHERE dKetones>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 19, GLUC_PP, vdate, vtime, [method], sComment FROM patdat_labs WHERE GLUC_PP>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 20, GLUC_NUE, vdate, vtime, [method], sComment FROM patdat_labs WHERE GLUC_NUE>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 21, Quick, vdate, vtime, [method], sComment FROM patdat_labs WHERE Quick>0;
INSERT INTO labvalues ([type], [value], vdate, vtime, [method], sComment)
  SELECT 22, INR, vdate, vtime, [method], sComment FROM patdat_labs WHERE INR>0;

-- What SQL has no words for: place, attributes, and whether a text may be empty.
--! labdefs: ID 0 16, type 0 1, unit 0 1, displayunit 0 1, field 0 1, units_allowed 0 1, LongDesc 0 1, BDTKey 0 1
--! labdefs: rangefrom 0 1, rangeuntil 0 1, criticalThreshold 0 1, sComment 0 2 empty
