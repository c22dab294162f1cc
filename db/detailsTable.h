#pragma once

#include <memory>

#include "db/dao.h"

// The recordset that appends to table "details", and its fields.
class DetailsTable {
public:
    explicit DetailsTable(Database& database) : rows(database.OpenRecordset("details")) {}

    std::unique_ptr<Recordset> rows;
    Field& idx = rows->Fields("idx");
    Field& fullPath = rows->Fields("fullPath");
    Field& drive = rows->Fields("drive");
    Field& folder = rows->Fields("folder");
    Field& fileName = rows->Fields("fileName");
    Field& extension = rows->Fields("extension");
    Field& description = rows->Fields("description");
    Field& size = rows->Fields("size");
    Field& dateAccessed = rows->Fields("dateAccessed");
    Field& dateModified = rows->Fields("dateModified");
    Field& owner = rows->Fields("owner");
    Field& dateInserted = rows->Fields("dateInserted");
    Field& parentFolder = rows->Fields("parentFolder");
    Field& isFolder = rows->Fields("isFolder");
    Field& scanCompleteTime = rows->Fields("scanCompleteTime");
    Field& sizeOnDisk = rows->Fields("sizeOnDisk");
    Field& fileCount = rows->Fields("fileCount");
    Field& folderCount = rows->Fields("folderCount");
};
