-- Read after schema.sql, while there are no rows, for a template whose texts are compared ignoring case. Extensions are
-- left out: they are stored in lower case unless the user wants to distinguish them by case.
pragma writable_schema = on;
update sqlite_master set sql = replace(replace(sql, 'varchar(255)', 'varchar(255) collate nocase'),
    'extension varchar(255) collate nocase', 'extension varchar(255)');
pragma writable_schema = reset;
