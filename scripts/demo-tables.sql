INSERT INTO repairs (sec, row, col, repair_type, type, date_scheduled, date_completed, site_code, comp, outage, reason)
SELECT sec, row, col, 'PLUG', 'ROLLED', MIN(entry_time), MIN(entry_time), site_code, comp, MIN(outage), 'Found plugged'
FROM report WHERE defect = 'PLG' GROUP BY sec, row, col, site_code, comp;

INSERT INTO tube_sets (name, [desc]) VALUES ('Periphery', 'Tubes on the edge of the bundle');
INSERT INTO tube_set_entry (name, entry_num, sec, row, col, color, symbol)
SELECT 'Periphery', (SELECT COUNT(*) FROM tubes AS b WHERE b.is_periph = True
        AND b.sec * 1000000 + b.row * 1000 + b.col < a.sec * 1000000 + a.row * 1000 + a.col), sec, row, col, 255, 80
FROM tubes AS a WHERE a.is_periph = True;

INSERT INTO plans (name, probe_model, beg_test, end_test, create_time, [desc])
SELECT 'Depth 20 and above', 'RX-580', MIN(beg_test), MAX(end_test), MAX(entry_time), 'Tubes with a depth of 20% and above'
FROM report WHERE pcnt >= 20;
INSERT INTO plan_entry (name, entry_num, sec, row, col)
SELECT 'Depth 20 and above', (SELECT COUNT(*) FROM tubes AS b
        WHERE EXISTS (SELECT * FROM report AS r WHERE r.sec = b.sec AND r.row = b.row AND r.col = b.col AND r.pcnt >= 20)
        AND b.sec * 1000000 + b.row * 1000 + b.col < a.sec * 1000000 + a.row * 1000 + a.col), sec, row, col
FROM tubes AS a
WHERE EXISTS (SELECT * FROM report AS r WHERE r.sec = a.sec AND r.row = a.row AND r.col = a.col AND r.pcnt >= 20);
