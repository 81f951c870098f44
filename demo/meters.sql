CREATE TABLE [meters] ([id] COUNTER, [serial] TEXT(50), [model] TEXT(50), [assignedto] LONG, [name] TEXT(100), [firstname] TEXT(100));
CREATE INDEX [assignedto] ON [meters] ([assignedto]);
INSERT INTO [meters] ([serial], [model], [assignedto]) VALUES ('4711-0001', 'Messgerät mit Speicher', 0);
INSERT INTO [meters] ([serial], [model], [assignedto]) VALUES ('4711-0002', 'Messgerät mit Speicher', 0);
INSERT INTO [meters] ([serial], [model], [assignedto]) VALUES ('0815-1001', 'Sensor mit Empfänger', 0);
