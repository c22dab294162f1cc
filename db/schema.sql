-- The template 001.dat of the working database. Every run starts from a copy of it.
pragma page_size = 16384;

-- One row per file and per folder that a scan visited.
create table details (
    idx integer primary key,      -- order of recording
    fullPath varchar(255),        -- without the drive part, cut to 255 characters; a folder's ends in "\"
    drive varchar(255),
    folder varchar(255),
    fileName varchar(255),
    extension varchar(255),
    description varchar(255),
    size double,                  -- bytes
    dateAccessed varchar(255),    -- mm/dd/yyyy hh:nn:ss AMPM, local time
    dateModified varchar(255),
    owner varchar(255),
    dateInserted datetime,        -- in the same form
    parentFolder varchar(255),    -- with its drive, whole
    isFolder smallint,            -- 1 or 0
    scanCompleteTime varchar(255)
);

-- A folder's direct children: views and folder totals.
create index details_parentFolder on details (parentFolder);

-- Folders by location key. Only a folder's path ends in "\", so a tenth of the rows is in here.
create index details_location on details (fullPath, drive) where substr(fullPath, -1) = '\';

-- The folder tree as it was saved.
create table nodes (
    nodeIndex integer,
    nodeKey varchar(255),
    expanded boolean,
    selected boolean,
    parentIndex integer,          -- -1 for a top-level node
    nodeText varchar(255),
    nodeTag varchar(255),
    parentKey varchar(255)
);
