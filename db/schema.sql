-- The template 001.dat of the working database. Every run starts from a copy of it.
pragma page_size = 16384;
pragma application_id = 0x53504e59; -- "SPNY" (db/ownDatabase.h)

-- One row for each file and folder recorded.
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
    scanCompleteTime varchar(255),
    sizeOnDisk double,            -- bytes allocated; a folder's with its own; 0 for a further name of a file
    fileCount integer,            -- of a folder: files in it, at any depth
    folderCount integer           -- likewise folders
);

-- What lies in a folder, and, for parents begin with their own parents, what lies anywhere below it.
create index details_parentFolder on details (parentFolder);

-- A folder's own row, and a folder's subfolders. Found by these columns and not by fullPath, which is cut; only
-- folders, a tenth of the rows, are in here. The "+ 0" keeps queries that ask for "isFolder = 1" from using it: they
-- get their rows in the order of recording.
create index details_folders on details (parentFolder, fileName) where isFolder + 0 = 1;

-- One row for each scan that the rows of table details come from. Dates are yyyy-mm-dd hh:nn:ss, UTC. Earlier
-- versions had no such table.
create table scans (
    scanId integer primary key,   -- order of scanning
    host varchar(255),            -- the machine's name
    system varchar(255),          -- "Debian GNU/Linux 12 (bookworm)", "Windows 10.0.19045"
    path text,                    -- of the folder with which the scan began, ends in "\"
    started datetime,
    finished datetime,
    cancelled smallint,           -- 1 or 0, as are the next three
    exact smallint,               -- real sizes of large files
    withOwners smallint,
    onDisk smallint,              -- with the room that files take on the disk
    excludes text,                -- patterns, one a line
    unreadableFolders integer,
    unreadableFiles integer,
    programVersion varchar(255),
    uniqueId varchar(255)         -- a random number; earlier versions gave none
);

-- The saved folder tree.
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
