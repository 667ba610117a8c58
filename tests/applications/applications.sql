-- Sample applications for prior approval, loaded behind the host's schema (tests/schema) on SQLite,
-- PostgreSQL and MariaDB. Each is named here and in expected/, where the request file stands that comes
-- of it. Every statement ends with a semicolon at the end of a line, and no text holds one there.
-- People, numbers and companies are invented.

INSERT INTO Postadresseregister (Postnr, Poststedsnavn) VALUES
  ('11122', 'Stockholm'),
  ('62157', 'Visby'),
  ('98107', 'Kiruna');

-- Address records of the companies 31 (everything), 32 (second address line only), 33 (no address,
-- markup, an empty provider number) and of the practitioners 41 to 43, whose names become fewer.
INSERT INTO Pasient (ID, Fornavn, Navn, adr1, adr2, postnr, organizationNo, tlfPrivat) VALUES
  (20031, NULL, 'Åkes Tandvård & Söner AB', 'Storgatan 1', 'Box 5', '11122', '556677-8899', '08-555 31 00'),
  (20032, NULL, 'Folktandvården Visby', NULL, 'Box 7', '62157', '556677-0032', NULL),
  (20033, NULL, 'Tand <och> "Mun" & Co', NULL, NULL, '98107', '556677-0033', ''),
  (20041, 'Eva', 'Ek', NULL, NULL, NULL, NULL, NULL),
  (20042, NULL, 'Wärnér', NULL, NULL, NULL, NULL, NULL),
  (20043, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO company (id, idarkiv, levno) VALUES
  (31, 20031, 'L-31'),
  (32, 20032, NULL),
  (33, 20033, '');
INSERT INTO Worker (ID, RID, ToothSystem, ReseptID, IDArkiv) VALUES
  (41, 31, 1, 'R-41', 20041),
  (42, 32, 1, NULL, 20042),
  (43, 33, 1, NULL, 20043);

-- Patients: 65 in 2007, 36, 65 in 2026, over a hundred, without the digits of the identity number,
-- with letters beyond Latin-1, with empty names.
INSERT INTO Pasient (ID, Fornavn, Navn, fDato, PersNr) VALUES
  (21001, 'Anna', 'Berg', '1942-03-15 00:00:00', '2468'),
  (21002, 'Jörgen', 'Åström', '1990-07-01 00:00:00', '1234'),
  (21003, 'Siv', 'Ödman', '1961-12-31 00:00:00', '5678'),
  (21004, 'Elsa', 'Nygård', '1910-02-28 00:00:00', '1357'),
  (21005, 'Nils', 'Holm', '1985-10-09 00:00:00', NULL),
  (21006, 'Łukasz', 'Żółć', '1978-05-17 00:00:00', '9753'),
  (21007, '', '', '2001-01-31 00:00:00', '8642');

-- 1001-empty: only what must be there; not even the clinician has a name.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo) VALUES
  (1001, 21002, 43, 33, NULL, '2026-1001');

-- 1002-full: every field, several teeth in each per-tooth column; the patient is too young for the
-- estimate although it has a row.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, PrevDentalCare, Caries, perio, Apikal, Anamnes, PlanTreatm, PlanTreatmUJaw,
  PlanTreatmLJaw, TimeEstimate81, TimeEstimateDentalTechnic, Notes) VALUES
  (1002, 21002, 41, 31, '2026-11-16 13:40:00', '2026-1002', TRUE, TRUE, TRUE, TRUE, TRUE, TRUE,
   TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, 4, 1, 'brev', 2, 3, 1, 1,
   '<11>krona 1999</11><21>krona 2001</21><36>fyllning</36>', '<14>MO</14><46>D</46>',
   '<31>ficka 6 mm</31><41>ficka 5 mm</41>', '<22>periapikal förändring</22>',
   'Värk vid tuggning. Överkänslig mot penicillin.',
   '<11>304 305</11><21>304</21><36>101 102 103 104</36>', '501 502', '601', '90 min', '3 tim',
   'Syns inte: anteckningarna hör till kostnadsberäkningen.');

INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1081, 1002, 304, 'Ä', FALSE, 1, 3975, '2026-11-16 13:40:00');

-- 1003-nothing-chosen: the same as 1001 by values instead of Null; empty texts are written, empty
-- per-tooth columns are not.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, PrevDentalCare, Caries, perio, Apikal, Anamnes, PlanTreatm, PlanTreatmUJaw,
  PlanTreatmLJaw, TimeEstimate81, TimeEstimateDentalTechnic, Notes) VALUES
  (1003, 21002, 42, 32, '2026-11-16 00:00:00', '2026-1003', FALSE, FALSE, FALSE, FALSE, FALSE,
   FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, 0, 0, '', 0, 0, 0, 0, '', '', '', '',
   '', '', '', '', '', '', '');

-- 1004-every-other: every second choice.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, PrevDentalCare, perio, Anamnes, TimeEstimate81, PlanTreatmLJaw) VALUES
  (1004, 21005, 41, 32, '2026-11-02 15:30:00', '2026-1004', TRUE, FALSE, TRUE, FALSE, TRUE, FALSE,
   TRUE, FALSE, TRUE, FALSE, TRUE, FALSE, TRUE, NULL, 2, NULL, 1, NULL, 12, NULL,
   '<18>extr</18>', '<33>ficka 7 mm</33>', 'Utan sista siffror.', '45', '701');

-- 1005-other-every-other: the choices that 1004 leaves out.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, Caries, Apikal, PlanTreatm, TimeEstimateDentalTechnic, PlanTreatmUJaw) VALUES
  (1005, 21005, 42, 31, '2026-11-02 15:30:00', '2026-1005', FALSE, TRUE, FALSE, TRUE, FALSE, TRUE,
   FALSE, TRUE, FALSE, TRUE, FALSE, TRUE, FALSE, 6, NULL, 'e-post', NULL, 10, NULL, 2,
   '<27>OD</27>', '<37>pulpit</37>', '<27>304</27>', '5', '801');

-- 1006-estimate: rows of every kind; the notes have two lines. Taken are 401 (twice, as one row of
-- 2), 681, 682, 402 to 404, and 405 (twice, as two rows by their codes); not the rows 16 to 23.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, IncreasedComp,
  HighExpCover, EstimateOfCost, Anamnes, PlanTreatm, PlanTreatmUJaw, Notes) VALUES
  (1006, 21001, 41, 31, '2007-01-02 10:00:00', '2007-1006', TRUE, TRUE, 1,
   'Helprotes i överkäken sedan 1998.', '<33>681</33><43>681</43>', '682',
   'Första raden: två sittningar.
Andra raden: 10 % å < 5 mm.');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo,
  InternalCode, Debit, IncrComp, NoOf, Amount, RegDate) VALUES
  (1001, 1006, 401, 'K1', 'Ä', FALSE, 1, 4350.5, '2007-01-02 10:00:00'),
  (1002, 1006, 401, 'K1', 'Ä', FALSE, 1, 4350.5, '2007-01-02 10:00:00'),
  (1003, 1006, 681, 'P1', 'Ä', FALSE, 2, 2850, '2007-01-02 10:00:00'),
  (1004, 1006, 682, 'P2', 'Ä', FALSE, 1, 3200, '2007-01-02 10:00:00'),
  (1005, 1006, 402, NULL, 'Ä', NULL, NULL, 1234.567, '2007-01-02 10:00:00'),
  (1006, 1006, 403, 'K3', 'Ä', FALSE, 0, 100, '2007-01-02 10:00:00'),
  (1007, 1006, 404, 'K4', 'Ä', FALSE, 3, NULL, '2007-01-02 10:00:00'),
  (1008, 1006, 405, 'K5', 'Ä', FALSE, 1, 0.5, '2002-07-01 00:00:00'),
  (1009, 1006, 405, 'K6', 'Ä', FALSE, 1, 0.5, '2002-07-01 00:00:00'),
  (1016, 1006, 406, 'K6', 'N', FALSE, 1, 999, '2007-01-02 10:00:00'),
  (1017, 1006, 407, 'K7', NULL, FALSE, 1, 999, '2007-01-02 10:00:00'),
  (1018, 1006, 408, 'K8', 'ä', FALSE, 1, 999, '2007-01-02 10:00:00'),
  (1019, 1006, 0, 'K9', 'Ä', FALSE, 1, 999, '2007-01-02 10:00:00'),
  (1020, 1006, NULL, 'K10', 'Ä', FALSE, 1, 999, '2007-01-02 10:00:00'),
  (1021, 1006, 409, 'K11', 'Ä', TRUE, 1, 999, '2007-01-02 10:00:00'),
  (1022, 1006, 410, 'K12', 'Ä', FALSE, 1, 999, '2002-03-31 00:00:00'),
  (1023, 1006, 411, 'K13', 'N', FALSE, 1, 999, NULL);

-- 1007-boundary-day: registered late on 1 January of the year of 65; the estimate stays out.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, EstimateOfCost, Notes)
VALUES (1007, 21003, 41, 31, '2026-01-01 23:59:59', '2026-1007', 1, 'Syns inte.');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1030, 1007, 401, 'Ä', FALSE, 1, 5000, '2026-01-01 23:59:59');

-- 1008-day-after: registered on 2 January, but no row is taken.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, EstimateOfCost) VALUES
  (1008, 21003, 42, 32, '2026-01-02 00:00:00', '2026-1008', 1);
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1031, 1008, 401, 'N', FALSE, 1, 5000, '2026-01-02 00:00:00');

-- 1009-many-rows: twelve ordinary rows, which run into the keys of 681 and 682.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, EstimateOfCost, Notes)
VALUES (1009, 21001, 41, 31, '2026-11-16 09:00:00', '2026-1009', 14, '');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1041, 1009, 301, 'Ä', FALSE, 1, 100, '2026-11-16 09:00:00'),
  (1042, 1009, 302, 'Ä', FALSE, 2, 100, '2026-11-16 09:00:00'),
  (1043, 1009, 303, 'Ä', FALSE, 3, 100, '2026-11-16 09:00:00'),
  (1044, 1009, 304, 'Ä', FALSE, 4, 100, '2026-11-16 09:00:00'),
  (1045, 1009, 305, 'Ä', FALSE, 5, 100, '2026-11-16 09:00:00'),
  (1046, 1009, 306, 'Ä', FALSE, 6, 100, '2026-11-16 09:00:00'),
  (1047, 1009, 307, 'Ä', FALSE, 7, 100, '2026-11-16 09:00:00'),
  (1048, 1009, 308, 'Ä', FALSE, 8, 100, '2026-11-16 09:00:00'),
  (1049, 1009, 309, 'Ä', FALSE, 9, 100, '2026-11-16 09:00:00'),
  (1050, 1009, 310, 'Ä', FALSE, 10, 100, '2026-11-16 09:00:00'),
  (1051, 1009, 311, 'Ä', FALSE, 11, 100, '2026-11-16 09:00:00'),
  (1052, 1009, 312, 'Ä', FALSE, 12, 100, '2026-11-16 09:00:00'),
  (1053, 1009, 681, 'Ä', FALSE, 1, 2900, '2026-11-16 09:00:00'),
  (1054, 1009, 682, 'Ä', FALSE, 2, 3200, '2026-11-16 09:00:00');

-- 1010-at-the-limit: four measures for each tooth and jaw, one jaw with its leading blank.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, PlanTreatm,
  PlanTreatmUJaw, PlanTreatmLJaw) VALUES
  (1010, 21002, 41, 31, '2026-11-16 09:00:00', '2026-1010',
   '<11>304 305 306 307</11><48>401 402 403 404</48>', ' 501 502 503 504', '601 602 603 604');

-- 1011-tooth-over-the-limit: five measures for the last tooth.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, PlanTreatm) VALUES
  (1011, 21002, 41, 31, '2026-11-16 09:00:00', '2026-1011',
   '<11>304</11><12>305</12><13>301 302 303 304 305</13>');

-- 1012-upper-jaw-over-the-limit: four measures behind two blanks count as five.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, PlanTreatmUJaw) VALUES
  (1012, 21002, 41, 31, '2026-11-16 09:00:00', '2026-1012', '  501 502 503 504');

-- 1013-lower-jaw-over-the-limit: a blank at the end counts as a fifth measure.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, PlanTreatm,
  PlanTreatmUJaw, PlanTreatmLJaw) VALUES
  (1013, 21002, 41, 31, '2026-11-16 09:00:00', '2026-1013', '<11>304</11>', '501',
   '601 602 603 604 ');

-- 1014-markup-refused: tags that nest, close twice, never close; markup and letters beyond Latin-1.
-- The document has all of it; the send check refuses the "<" that is no tag.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, SentBy, PrevDentalCare,
  Caries, perio, Apikal, Anamnes, PlanTreatm, PlanTreatmUJaw, PlanTreatmLJaw) VALUES
  (1014, 21006, 43, 33, '2026-11-16 09:00:00', '<2026>&"1014"', 'fax & post',
   '<11>a<12>b</12>c</11><13>d</13>', '<21>e</21></21><22>f</22>', '<31>g</31><32>h <33>i',
   'utan tagg < <41></41>', '<b>fet</b> & "citat" ]]> € 漢 😀',
   '<11>304 & <305></11> 2 < 3', '<501>', '&amp;');

-- 1015-very-old: over a hundred years, which the identity number shows; an estimate of one row.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, LAF, NoOfOPG, Notes)
VALUES (1015, 21004, 42, 32, '1999-12-31 12:00:00', '1999-1015', TRUE, 1, 'Ett käkben.');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1061, 1015, 681, 'Ä', FALSE, 3, 2900, '2003-05-05 12:00:00');

-- 1016-nameless: a patient whose names are empty texts.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo) VALUES
  (1016, 21007, 41, 31, '2026-11-16 09:00:00', '');

-- 1017-estimate-and-teeth: an older patient's application as a clinic sends it, with everything that
-- a page about it can show.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, Inlay, Orthodontics,
  Par16, IncreasedComp, Aids, TimeCharge, Implant, TwoStepTrial, Voluntary, Compl, LAF,
  HighExpCover, LSP, NoOfXRay, NoOfOPG, SentBy, NoOfModels, NoOfPhoto, NoOfCertificate,
  EstimateOfCost, PrevDentalCare, Caries, perio, Apikal, Anamnes, PlanTreatm, PlanTreatmUJaw,
  PlanTreatmLJaw, TimeEstimate81, TimeEstimateDentalTechnic, Notes) VALUES
  (1017, 21001, 41, 31, '2026-11-16 10:20:00', '2026-1017', TRUE, FALSE, FALSE, FALSE, FALSE, TRUE,
   TRUE, FALSE, FALSE, FALSE, FALSE, TRUE, FALSE, 6, 1, 'e-post', 2, 4, 0, 1,
   '<17>krona 1998</17><16>krona 1998</16><26>fyllning MOD</26><36>krona 2004</36><47>extraherad</47>',
   '<24>D, djup</24><37>MO</37>', '<31>ficka 6 mm</31><41>ficka 6 mm</41><42>ficka 5 mm</42>',
   '<36>periapikal förändring, mesial rot</36><46>pulpit</46>',
   'Värk i underkäken vid tuggning sedan i våras. Behandlad för högt blodtryck. Överkänslig mot penicillin.',
   '<24>304</24><36>401 404</36><37>304</37><46>401 402 403 404</46><33>681</33><43>681</43>',
   '501', '682 601', '90 min', '8 tim',
   'Protesen i underkäken från 1998 är utsliten. Patienten har svårt att tugga.
Behandlingen delas på två sittningar.');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo,
  InternalCode, Debit, IncrComp, NoOf, Amount, RegDate) VALUES
  (1071, 1017, 304, 'K1', 'Ä', FALSE, 1, 3975, '2026-11-16 10:20:00'),
  (1072, 1017, 304, 'K1', 'Ä', FALSE, 1, 3975, '2026-11-16 10:20:00'),
  (1073, 1017, 401, 'R1', 'Ä', FALSE, 2, 2860.5, '2026-11-16 10:20:00'),
  (1074, 1017, 404, 'R4', 'Ä', FALSE, 2, 845, '2026-11-16 10:20:00'),
  (1075, 1017, 681, 'P1', 'Ä', FALSE, 2, 2900, '2026-11-16 10:20:00'),
  (1076, 1017, 682, 'P2', 'Ä', FALSE, 1, 3200, '2026-11-16 10:20:00');

-- 1018-older-without-rows: an older patient without estimate rows; the estimate stays out.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, EstimateOfCost, Notes)
VALUES (1018, 21001, 41, 31, '2026-11-16 09:00:00', '2026-1018', 1, 'Syns inte.');

-- 1019-last-quarter: rows around the quarter before the reform, some by their month, some by their
-- rate. Taken are those with an amount below 900.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo) VALUES
  (1019, 21001, 41, 31, '2007-01-02 00:00:00', '2007-1019');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1091, 1019, 55, 'Ä', FALSE, 1, 901, '2002-05-01 00:00:00'),
  (1092, 1019, 55, 'Ä', FALSE, 1, 110, '2002-07-01 00:00:00'),
  (1093, 1019, 77, 'Ä', FALSE, 1, 120, '2002-05-01 00:00:00'),
  (1094, 1019, 91, 'Ä', FALSE, 1, 902, '2002-05-01 00:00:00'),
  (1095, 1019, 94, 'Ä', FALSE, 1, 130, '2002-05-01 00:00:00'),
  (1096, 1019, 321, 'Ä', FALSE, 1, 903, '2002-03-31 23:59:59'),
  (1097, 1019, 321, 'Ä', FALSE, 1, 140, '2002-04-01 00:00:00'),
  (1098, 1019, 321, 'Ä', FALSE, 2, 150, '2002-06-30 23:59:59');

-- 1020-reformed-rates: the rates that change with the reform itself, each on its last day under the
-- older rules, not taken, and on its first under the newer ones.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo) VALUES
  (1020, 21004, 41, 31, '2026-11-16 09:00:00', '2026-1020');
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1101, 1020, 11, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1102, 1020, 11, 'Ä', FALSE, 1, 100, '2002-07-01 00:00:00'),
  (1103, 1020, 59, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1104, 1020, 59, 'Ä', FALSE, 2, 100, '2002-07-01 00:00:00'),
  (1105, 1020, 70, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1106, 1020, 70, 'Ä', FALSE, 3, 100, '2002-07-01 00:00:00'),
  (1107, 1020, 76, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1108, 1020, 76, 'Ä', FALSE, 4, 100, '2002-07-01 00:00:00'),
  (1109, 1020, 78, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1110, 1020, 78, 'Ä', FALSE, 5, 100, '2002-07-01 00:00:00'),
  (1111, 1020, 79, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1112, 1020, 79, 'Ä', FALSE, 6, 100, '2002-07-01 00:00:00'),
  (1113, 1020, 91, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1114, 1020, 91, 'Ä', FALSE, 7, 100, '2002-07-01 00:00:00'),
  (1115, 1020, 97, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1116, 1020, 97, 'Ä', FALSE, 8, 100, '2002-07-01 00:00:00'),
  (1117, 1020, 99, 'Ä', FALSE, 1, 999, '2002-06-30 00:00:00'),
  (1118, 1020, 99, 'Ä', FALSE, 9, 100, '2002-07-01 00:00:00');

-- 1021-increased-not-applied-for: a row of increased compensation, for which nobody applies.
INSERT INTO SEPrerequest (SEPrerequestID, PID, BID, RID, RegDate, CaseNo, IncreasedComp) VALUES
  (1021, 21001, 41, 31, '2026-11-16 09:00:00', '2026-1021', FALSE);
INSERT INTO SEPreRequestEstimateRows (SEPreRequestEstimateRowsID, SEPreRequest_ID, RateNo, Debit,
  IncrComp, NoOf, Amount, RegDate) VALUES
  (1131, 1021, 409, 'Ä', TRUE, 1, 999, '2026-11-16 09:00:00');
