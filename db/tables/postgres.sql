-- What PostgreSQL lacks of what the program's SQL asks for, made before the tables of schema.sql.
--
-- The collation compares as the server's: case, width and kana kind are ignored. Texts of it can be neither searched
-- nor matched by the engine's own functions, so that those here do it byte by byte or by a folded form.

CREATE COLLATION IF NOT EXISTS Japanese_CI_AS (PROVIDER = icu, LOCALE = 'ja-u-ks-level2', DETERMINISTIC = false);

CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE
    AS $$ SELECT statement_timestamp()::timestamp(3) $$;

CREATE OR REPLACE FUNCTION len(value text) RETURNS int LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT char_length(rtrim(value, ' ')) $$;

CREATE OR REPLACE FUNCTION replace_text(value text, sought text, instead text) RETURNS text LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT replace(value COLLATE "C", sought, instead) $$;

-- How long a text is for a column NVARCHAR(n) and for one VARCHAR(n) of code page 932.
CREATE OR REPLACE FUNCTION utf16_units(value text) RETURNS int LANGUAGE sql IMMUTABLE STRICT AS $$
    SELECT 2 * char_length(value)
        - char_length(regexp_replace(value COLLATE "C", '[\U00010000-\U0010FFFF]', '', 'g')) $$;

CREATE OR REPLACE FUNCTION bytes932(value text) RETURNS int LANGUAGE sql IMMUTABLE STRICT AS $$
    SELECT char_length(value) + char_length(regexp_replace(value COLLATE "C", '[\u0001-\u007F｡-ﾟ]', '', 'g')) $$;

-- The form in which searches compare a text; one character stays one, but for kana with a mark of their own (ｶﾞ).
CREATE OR REPLACE FUNCTION fold_for_search(value text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT AS $$
DECLARE
    folded text COLLATE "C" := lower(value COLLATE "C");
    bare CONSTANT text COLLATE "C" := 'カキクケコサシスセソタチツテトハヒフヘホウハヒフヘホ';
    marked CONSTANT text COLLATE "C" := 'ガギグゲゴザジズゼゾダヂヅデドバビブベボヴパピプペポ';
BEGIN
    IF octet_length(folded) = char_length(folded) THEN
        RETURN folded;
    END IF;
    folded := translate(folded,
    '！＂＃＄％＆＇（）＊＋，－．／０１２３４５６７８９：；＜＝＞？＠ＡＢＣＤＥＦＧＨＩＪＫＬＭＮ'
    'ＯＰＱＲＳＴＵＶＷＸＹＺ［＼］＾＿｀ａｂｃｄｅｆｇｈｉｊｋｌｍｎｏｐｑｒｓｔｕｖｗｘｙｚ｛｜'
    '｝～　｡｢｣､･ｦｧｨｩｪｫｬｭｮｯｰｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋ'
    'ﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜﾝぁあぃいぅうぇえぉおかがきぎくぐけげこごさざしじすずせぜ'
    'そぞただちぢっつづてでとどなにぬねのはばぱひびぴふぶぷへべぺほぼぽまみむめもゃやゅゆょよらり'
    'るれろゎわゐゑをんゔゕゖゝゞﾞﾟ',
    '!"#$%&''()*+,-./0123456789:;<=>?@abcdefghijklmn'
    'opqrstuvwxyz[\]^_`abcdefghijklmnopqrstuvwxyz{|'
    '}~ 。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒ'
    'フヘホマミムメモヤユヨラリルレロワンァアィイゥウェエォオカガキギクグケゲコゴサザシジスズセゼ'
    'ソゾタダチヂッツヅテデトドナニヌネノハバパヒビピフブプヘベペホボポマミムメモャヤュユョヨラリ'
    'ルレロヮワヰヱヲンヴヵヶヽヾ゛゜');
    IF folded ~ '[゛゜]' THEN
        FOR i IN 1 .. char_length(bare) LOOP
            folded := replace(folded, substr(bare, i, 1) || CASE WHEN i <= 21 THEN '゛' ELSE '゜' END,
                substr(marked, i, 1));
        END LOOP;
    END IF;
    RETURN folded;
END $$;

-- CHARINDEX: the position from 1 in the text as it is written, 0 when it is not there.
CREATE OR REPLACE FUNCTION charindex(sought text, value text, start int) RETURNS int LANGUAGE plpgsql IMMUTABLE STRICT AS $$
DECLARE
    behind text COLLATE "C" := substr(value, greatest(start, 1));
    at int := CASE sought WHEN '' THEN 0
        ELSE strpos(fold_for_search(behind) COLLATE "C", fold_for_search(sought)) END;
    found int := at;
BEGIN
    WHILE at > 0 AND char_length(fold_for_search(left(behind, found))) < at LOOP
        found := found + 1;
    END LOOP;
    RETURN CASE WHEN at = 0 THEN 0 ELSE greatest(start, 1) - 1 + found END;
END $$;

CREATE OR REPLACE FUNCTION charindex(sought text, value text) RETURNS int LANGUAGE sql IMMUTABLE STRICT
    AS $$ SELECT charindex(sought, value, 1) $$;

-- A pattern of LIKE as a regular expression: % any text, _ one character, [a-z] and [^a-z] one of a set, the escape
-- takes the next one's meaning away.
CREATE OR REPLACE FUNCTION like_expression(pattern text, escape text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT AS $$
DECLARE
    made text := '';
    literal text := '';
    set text;
    c text COLLATE "C";
    i int := 1;
BEGIN
    WHILE i <= char_length(pattern) + 1 LOOP
        c := substr(pattern, i, 1);
        set := CASE WHEN c = '[' AND c <> escape THEN substring(substr(pattern, i) COLLATE "C" FROM '^\[\^?[^]]+\]') END;
        IF c = escape AND c <> '' THEN
            i := i + 1;
            literal := literal || substr(pattern, i, 1);
        ELSIF c IN ('%', '_', '') OR set IS NOT NULL THEN
            made := made || regexp_replace(fold_for_search(literal) COLLATE "C", '([][\\.{}()*+?^$|])', '\\\1', 'g')
                || CASE c WHEN '%' THEN '.*' WHEN '_' THEN '.' WHEN '' THEN ''
                       ELSE replace(fold_for_search(set) COLLATE "C", '\', '\\') END;
            literal := '';
            i := i + coalesce(char_length(set) - 1, 0);
        ELSE
            literal := literal || c;
        END IF;
        i := i + 1;
    END LOOP;
    -- Without anchors where % stands, which is far quicker.
    RETURN regexp_replace(regexp_replace('^' || made || '$', '^\^\.\*', ''), '\.\*[$]$', '');
END $$;

CREATE OR REPLACE FUNCTION like_japanese(value text, pattern text, escape text) RETURNS boolean LANGUAGE sql IMMUTABLE
    AS $$ SELECT (fold_for_search(value) COLLATE "C") ~ like_expression(pattern COLLATE "C", escape COLLATE "C") $$;

CREATE OR REPLACE FUNCTION like_japanese(value text, pattern text) RETURNS boolean LANGUAGE sql IMMUTABLE
    AS $$ SELECT (fold_for_search(value) COLLATE "C") ~ like_expression(pattern COLLATE "C", '') $$;

CREATE OR REPLACE FUNCTION like_japanese(value numeric, pattern text) RETURNS boolean LANGUAGE sql IMMUTABLE
    AS $$ SELECT like_japanese(value::text, pattern) $$;

-- CONVERT(VARCHAR, x, style); a text has no style.
CREATE OR REPLACE FUNCTION convert_date(value timestamp, style int) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT AS $$
DECLARE
    form text := CASE style WHEN 8 THEN 'HH24:MI:SS' WHEN 11 THEN 'YY/MM/DD' WHEN 12 THEN 'YYMMDD'
        WHEN 23 THEN 'YYYY-MM-DD' WHEN 102 THEN 'YYYY.MM.DD' WHEN 108 THEN 'HH24:MI:SS' WHEN 111 THEN 'YYYY/MM/DD'
        WHEN 112 THEN 'YYYYMMDD' WHEN 120 THEN 'YYYY-MM-DD HH24:MI:SS' WHEN 121 THEN 'YYYY-MM-DD HH24:MI:SS.MS'
        WHEN 126 THEN 'YYYY-MM-DD"T"HH24:MI:SS.MS' END;
BEGIN
    IF form IS NULL THEN
        RAISE EXCEPTION 'unknown style of CONVERT';
    END IF;
    RETURN to_char(value, form);
END $$;

CREATE OR REPLACE FUNCTION convert_date(value text, style int) RETURNS text LANGUAGE sql IMMUTABLE
    AS $$ SELECT value $$;
