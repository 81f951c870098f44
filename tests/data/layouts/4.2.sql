-- Layout 4.2, after 4.0. An early release that counted itself without adding anything.

UPDATE db_info SET MinVersion=2;

INSERT INTO glucose (vDate, vTime, [Value], Event) VALUES (#3/4/2009#, #07:00:00#, 111, 23);
