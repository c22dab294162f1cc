-- For a template whose texts are to be compared ignoring case: read behind schema.sql, while there are no rows.
pragma writable_schema = on;
update sqlite_master set sql = replace(sql, 'varchar(255)', 'varchar(255) collate nocase');
pragma writable_schema = reset;
