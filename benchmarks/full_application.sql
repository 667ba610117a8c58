-- Sample application 1017 with forty estimate rows, as many as in the largest that clinics send;
-- for SQLite.
DELETE FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = 1017;
WITH RECURSIVE rows (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM rows WHERE n < 40)
INSERT INTO SEPreRequestEstimateRows (SEPreRequest_ID, RateNo, InternalCode, Debit, IncrComp, NoOf,
  Amount, RegDate)
SELECT 1017, 1000 + n, 'K1', 'Ä', FALSE, 1, 3975.5, '2026-11-16 10:20:00' FROM rows;
