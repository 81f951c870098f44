-- Layout 4.18, after 4.8. Insurance, history of the treatment, more of a laboratory visit.

UPDATE db_info SET MinVersion=18;

ALTER TABLE patdat ADD COLUMN insurance TEXT(30);
ALTER TABLE patdat ADD COLUMN insurancenumber TEXT(20);
ALTER TABLE patdat ADD COLUMN DiabetesSince SHORT DEFAULT -1;
ALTER TABLE patdat ADD COLUMN InsulinSince SHORT DEFAULT -1;
ALTER TABLE patdat ADD COLUMN OADSince SHORT DEFAULT -1;
ALTER TABLE patdat ADD COLUMN CPeptid SHORT DEFAULT -1;
UPDATE patdat SET insurance='AOK', insurancenumber='A123', DiabetesSince=1989;
ALTER TABLE db_info ADD COLUMN LastUser TEXT(30);

ALTER TABLE patdat_labs ADD COLUMN GLUC_NUE SINGLE DEFAULT -1;
ALTER TABLE patdat_labs ADD COLUMN GLUC_PP SINGLE DEFAULT -1;
ALTER TABLE patdat_labs ADD COLUMN labor_id LONG DEFAULT -1;
ALTER TABLE patdat_labs ADD COLUMN labor_desc TEXT(255);
ALTER TABLE patdat_labs ADD COLUMN Quick SINGLE DEFAULT -1;
ALTER TABLE patdat_labs ADD COLUMN INR SINGLE DEFAULT -1;
UPDATE patdat_labs SET labor_id=3, labor_desc='Labor Süd', GLUC_NUE=99, GLUC_PP=141, Quick=85, INR=1.5 WHERE dHbA>0;
UPDATE patdat_labs SET labor_id=0 WHERE labor_id IS NULL;

ALTER TABLE Labordefinitionen ADD COLUMN LaborID LONG DEFAULT 0;
UPDATE Labordefinitionen SET LaborID=0;
INSERT INTO Labordefinitionen ([Field], LongDesc, LaborID) VALUES ('SCHOL', 'Cholesterin', 3);

-- What SQL has no words for: place, attributes, and whether a text may be empty; a blank as default.
--! patdat: insurance 0 2 empty, insurancenumber 0 2 empty, DiabetesSince 0 1, InsulinSince 0 1, OADSince 0 1
--! patdat: CPeptid 0 1
--! db_info: LastUser 0 1 empty
--! Labordefinitionen: LaborID 0 1
--! patdat_labs: ID 0 16, vdate 3 1, vtime 4 1, sComment 5 2, dHbA 6 1, dHbAc 7 1, iChol 8 1, iAlbu 9 1, iHDL 10 1
--! patdat_labs: iLDL 11 1, iTri 12 1, iCreatinin 13 1, dKetones 14 1, GLUC_NUE 15 1, GLUC_PP 16 1, labor_id 1 1
--! patdat_labs: labor_desc 2 1, Quick 0 1, INR 0 1
--! Behandlungsprofil: BLUTDR_S 0 2 blank, LIPID_S 0 2 blank
