-- The host's database as far as Vilnor touches it, with sample data, for the demo and the tests. The
-- host owns the real schema; this is its likeness. One description for all products:
-- make_schema.py puts each product's spelling in place of
--   IDENTITY KEY                  the column of a key that the database gives out
--   NEXT KEY OF table.column IS n the number that the database gives out next; sample rows have
--                                 keys of their own
--   timestamp                     the type of a moment
-- All else reads the same on SQLite, PostgreSQL and MariaDB. Every statement ends with a semicolon at the
-- end of a line, and no text holds one there. People, numbers and companies are invented.

DROP TABLE IF EXISTS Vilnor;
DROP TABLE IF EXISTS Journal;
DROP TABLE IF EXISTS VilnorPasient;
DROP TABLE IF EXISTS SEPreRequestEstimateRows;
DROP TABLE IF EXISTS SEPrerequest;
DROP TABLE IF EXISTS Worker;
DROP TABLE IF EXISTS company;
DROP TABLE IF EXISTS Pasient;
DROP TABLE IF EXISTS Postadresseregister;

-- Patients, and the address records of practitioners (Worker.IDArkiv) and companies
-- (company.idarkiv).
CREATE TABLE Pasient (
  ID IDENTITY KEY,
  Fornavn varchar(50),
  Navn varchar(80),
  fDato timestamp,
  PersNr varchar(10),
  Code1 integer,
  adr1 varchar(60),
  adr2 varchar(60),
  postnr varchar(10),
  organizationNo varchar(20),
  tlfPrivat varchar(30)
);
CREATE INDEX IX_Pasient_Code1 ON Pasient (Code1);

-- Practitioners.
CREATE TABLE Worker (
  ID IDENTITY KEY,
  RID integer,
  ToothSystem integer,
  ReseptID varchar(20),
  IDArkiv integer
);

-- Provider companies; levno is the number that the insurance office gave them.
CREATE TABLE company (
  id IDENTITY KEY,
  idarkiv integer,
  levno varchar(20)
);

CREATE TABLE Postadresseregister (
  Postnr varchar(10) NOT NULL PRIMARY KEY,
  Poststedsnavn varchar(50)
);

-- Prior-approval applications. The five texts from PrevDentalCare to PlanTreatm hold one run a
-- tooth: <11>text</11>.
CREATE TABLE SEPrerequest (
  SEPrerequestID IDENTITY KEY,
  PID integer,
  BID integer,
  RID integer,
  RegDate timestamp,
  CaseNo varchar(30),
  Inlay boolean,
  Orthodontics boolean,
  Par16 boolean,
  IncreasedComp boolean,
  Aids boolean,
  TimeCharge boolean,
  Implant boolean,
  TwoStepTrial boolean,
  Voluntary boolean,
  Compl boolean,
  LAF boolean,
  HighExpCover boolean,
  LSP boolean,
  NoOfXRay integer,
  NoOfOPG integer,
  SentBy varchar(50),
  NoOfModels integer,
  NoOfPhoto integer,
  NoOfCertificate integer,
  EstimateOfCost integer,
  PrevDentalCare text,
  Caries text,
  perio text,
  Apikal text,
  Anamnes text,
  PlanTreatm text,
  PlanTreatmUJaw text,
  PlanTreatmLJaw text,
  TimeEstimate81 varchar(20),
  TimeEstimateDentalTechnic varchar(20),
  Notes text
);
CREATE INDEX IX_SEPrerequest_PID ON SEPrerequest (PID);

CREATE TABLE SEPreRequestEstimateRows (
  SEPreRequestEstimateRowsID IDENTITY KEY,
  SEPreRequest_ID integer,
  RateNo integer,
  InternalCode varchar(20),
  Debit varchar(5),
  IncrComp boolean,
  NoOf integer,
  Amount double precision,
  RegDate timestamp
);
CREATE INDEX IX_EstimateRows_SEPreRequest ON SEPreRequestEstimateRows (SEPreRequest_ID);

CREATE TABLE Journal (
  ID IDENTITY KEY,
  PID integer,
  Tekst text,
  BID integer,
  RID integer,
  Dato timestamp,
  KODE integer,
  Status varchar(1),
  Fakturert integer,
  RefTBID integer
);
CREATE INDEX IX_Journal_PID ON Journal (PID);

CREATE TABLE Vilnor (
  VilnorId IDENTITY KEY,
  PID integer,
  BID integer,
  RID integer,
  FHP_ID integer,
  CaseId varchar(50),
  CaseType integer,
  Journal_ID integer,
  StatusCode integer,
  VilnorUser varchar(100),
  RegDate timestamp
);
CREATE INDEX IX_Vilnor_PID ON Vilnor (PID);
CREATE INDEX IX_Vilnor_FHP_ID ON Vilnor (FHP_ID);
CREATE INDEX IX_Vilnor_CaseId ON Vilnor (CaseId);

CREATE TABLE VilnorPasient (
  PID integer NOT NULL,
  UserName varchar(100)
);
CREATE INDEX IX_VilnorPasient_PID ON VilnorPasient (PID);

INSERT INTO Postadresseregister (Postnr, Poststedsnavn) VALUES
  ('21119', 'Malmö'),
  ('35230', 'Växjö'),
  ('41301', 'Göteborg'),
  ('58222', 'Linköping'),
  ('65224', 'Karlstad'),
  ('72211', 'Västerås'),
  ('83131', 'Östersund'),
  ('90325', 'Umeå');

-- 4714 was born more than a hundred years ago, 4717 has nothing but an id.
INSERT INTO Pasient (ID, Fornavn, Navn, fDato, PersNr, adr1, adr2, postnr, tlfPrivat) VALUES
  (4711, 'Åsa-Märta', 'Öberg', '1985-03-12 00:00:00', '1234', 'Ängsvägen 7', NULL, '41301', '031-555 01 11'),
  (4712, 'René', 'Lindqvist', '1971-11-30 00:00:00', '5678', 'Storgatan 1', 'Box 5', '58222', NULL),
  (4713, 'Anna', 'Berg', '1942-03-15 00:00:00', '2468', NULL, 'Box 12', '83131', '063-555 02 22'),
  (4714, 'Göte', 'Ångström', '1919-05-05 00:00:00', '1357', 'Kyrkbacken 3', NULL, '90325', NULL),
  (4715, 'Éva', 'Östlund-Wärn', '2010-08-24 00:00:00', '8642', 'Sjövägen 22', NULL, '35230', NULL),
  (4716, 'Per', 'O''Neill', '1958-12-31 00:00:00', '9753', 'Åkergränd 2', NULL, '72211', '021-555 03 33'),
  (4717, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);

-- The host keeps the two reserved entries of the user mapping as patients with these codes:
-- applications without and with a cost estimate.
INSERT INTO Pasient (ID, Fornavn, Navn, Code1) VALUES
  (9001, 'Vilnor Link', 'Förhandsprövning', -32000),
  (9002, 'Vilnor Link', 'Kostnadsberäkning', -32001);

-- Address records of the practitioners 12 and 13 and of the companies 3 and 4.
INSERT INTO Pasient (ID, Fornavn, Navn, adr1, adr2, postnr, organizationNo, tlfPrivat) VALUES
  (5012, 'Björn', 'Ek', NULL, NULL, NULL, NULL, NULL),
  (5013, 'Zoë', 'Åhlén', NULL, NULL, NULL, NULL, NULL),
  (5003, NULL, 'Tandläkarna vid Ån AB', 'Ågatan 5', 'Box 88', '41301', '559900-1234', '031-555 10 00'),
  (5004, NULL, 'Folktandkliniken Östra', NULL, 'Box 9', '83131', '559900-5678', NULL);
NEXT KEY OF Pasient.ID IS 10001;

INSERT INTO Worker (ID, RID, ToothSystem, ReseptID, IDArkiv) VALUES
  (12, 3, 1, 'R-0012', 5012),
  (13, 4, 1, NULL, 5013);
NEXT KEY OF Worker.ID IS 14;

INSERT INTO company (id, idarkiv, levno) VALUES
  (3, 5003, 'L-1003'),
  (4, 5004, NULL);
NEXT KEY OF company.id IS 5;

-- 71 is linked to a case already, 77 has every field, 78 is an older patient's with estimate rows,
-- 79 has only what must be there, 80 plans more than fits.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, PrevDentalCare, Caries, perio, Apikal, Anamnes, PlanTreatm, PlanTreatmUJaw,
  PlanTreatmLJaw, TimeEstimate81, TimeEstimateDentalTechnic, Notes) VALUES
  (71, 4712, 12, 3, '2026-09-01 09:15:00', '2026-071', TRUE, FALSE, FALSE, FALSE, FALSE, FALSE,
   FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, 2, 0, NULL, 0, 0, 0, 0, NULL,
   '<26>MOD</26>', NULL, NULL, NULL, '<26>krona</26>', NULL, NULL, NULL, NULL, NULL),
  (77, 4711, 12, 3, '2026-11-16 13:40:00', '2026-077', TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, TRUE,
   TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, 4, 1, 'brev', 2, 3, 1, 1,
   '<11>krona 1999</11><36>fyllning</36>', '<14>MO</14><46>D</46>', '<31>ficka 6 mm</31>',
   '<22>periapikal förändring</22>', 'Värk vid tuggning. Överkänslig mot penicillin.',
   '<11>304 305</11><36>101 102 103 104</36>', ' 501 502', '601', '90 min', '3 tim',
   'Upplysningar: patienten önskar snabb handläggning.'),
  (78, 4713, 13, 4, '2007-01-02 10:00:00', '2007-078', FALSE, FALSE, FALSE, FALSE, FALSE, FALSE,
   FALSE, FALSE, FALSE, FALSE, FALSE, TRUE, FALSE, 6, 1, NULL, 0, 0, 0, 1, NULL, NULL, NULL, NULL,
   'Helprotes överkäke sedan 1998.', '<43>681</43><33>681</33>', NULL, '682', '120 min', '8 tim',
   'Åldern gör två sittningar nödvändiga.'),
  (79, 4714, 12, 3, '2026-10-05 08:00:00', '2026-079', NULL, NULL, NULL, NULL, NULL, NULL, NULL,
   NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
   NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),
  (80, 4715, 13, 4, '2026-11-02 15:30:00', '2026-080', FALSE, TRUE, FALSE, FALSE, FALSE, FALSE,
   FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, 0, 1, 'e-post', 1, 4, 0, 0, NULL, NULL, NULL,
   NULL, 'Trångställning.', '<13>1 2 3 4 5</13>', '1 2 3 4', NULL, NULL, NULL, NULL);
NEXT KEY OF SEPrerequest.SEPrerequestID IS 81;

-- The first two rows of 78 are alike and come back as one; 77 has a single row.
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo,
  InternalCode, Debit, IncrComp, NoOf, Amount, RegDate) VALUES
  (1, 78, 801, 'K1', 'Ä', FALSE, 1, 4350.5, '2007-01-02 10:00:00'),
  (2, 78, 801, 'K1', 'Ä', FALSE, 1, 4350.5, '2007-01-02 10:00:00'),
  (3, 78, 681, 'P1', 'Ä', FALSE, 1, 2900, '2007-01-02 10:00:00'),
  (4, 78, 682, 'P2', 'Ä', TRUE, 2, 3100.25, '2007-01-02 10:00:00'),
  (5, 78, 115, NULL, 'N', FALSE, NULL, 250, '2007-01-02 10:00:00'),
  (6, 77, 304, 'K2', 'Ä', FALSE, 1, 3975, '2026-11-16 13:40:00');
NEXT KEY OF SEPreRequestEstimateRows.SEPreRequestEstimateRowsID IS 7;

-- Journal lines 501 and 503 are as Vilnor writes them; 502 carries the "!" in front of its
-- reference; 504 is a note of the clinic's own.
INSERT INTO Journal (ID, PID, Tekst, BID, RID, Dato, KODE, Status, Fakturert, RefTBID) VALUES
  (501, 4712, 'Förhandsprövning, ärendenr: 2026-071 överförd till Vilnor Link ref.nr 2071', 12, 3, '2026-09-01 09:20:00', 22302, 'U', 0, 101),
  (502, 4712, 'Ärende upprättat i Vilnor Link ref.nr !2072', 12, 3, '2026-09-15 14:05:00', 22302, 'U', 0, 102),
  (503, 4714, 'Ärende upprättat i Vilnor Link ref.nr 2073', 13, 4, '2026-10-05 08:30:00', 22302, 'U', 0, 103),
  (504, 4711, 'Undersökning, inga åtgärder', 12, 3, '2026-06-10 11:00:00', 101, 'U', 0, 0);
NEXT KEY OF Journal.ID IS 505;

INSERT INTO Vilnor (VilnorId, PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID, StatusCode,
  VilnorUser, RegDate) VALUES
  (101, 4712, 12, 3, 71, '2071', 1, 501, 5, 'bjorn.ek', '2026-09-01 09:20:00'),
  (102, 4712, 12, 3, NULL, '2072', 9, 502, 5, 'bjorn.ek', '2026-09-15 14:05:00'),
  (103, 4714, 13, 4, NULL, '2073', 9, 503, 5, 'zoë.åhlén', '2026-10-05 08:30:00');
NEXT KEY OF Vilnor.VilnorId IS 104;

INSERT INTO VilnorPasient (PID, UserName) VALUES
  (5012, 'bjorn.ek'),
  (5013, 'zoë.åhlén'),
  (9001, 'granskare'),
  (9002, 'kostnadsgranskare');
