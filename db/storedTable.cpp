#include <algorithm>
#include <array>

#include "db/daoImplementation.h"
#include "db/values.h"
#include "platform/fileError.h"
#include "platform/text.h"

namespace {

// Throws unless the table is one that only holds rows.
class TableCheck {
public:
    TableCheck(Connection& connection, std::string_view table) : connection_(connection), table_(table) {}

    void requirePlain() {
        Statement schema = connection_.prepare("select type, name, tbl_name, sql from sqlite_master");
        bool found = false;
        while (schema.step()) {
            const bool isTrigger = schema.text(0) == "trigger";
            const bool isNamed = platform::equalIgnoringAsciiCase(schema.text(isTrigger ? 2 : 1), table_);
            if (isNamed && isTrigger) {
                refuse("has a trigger");
            }
            if (isNamed) {
                requireTable(schema.text(0), schema.text(3));
                found = true;
            }
        }
        if (!found) {
            throw fault(databaseError::noSuchTable,
                        "The database has no table '" + std::string(table_) + "'");
        }
        requireStoredColumns(); // which opens the table, and so comes last
    }

    // To be asked for a table that is plain.
    void requirePlainIndexes() {
        Statement parts =
            connection_.prepare("select i.name, i.partial, x.cid from pragma_index_list(?1) as i, "
                                "pragma_index_xinfo(i.name) as x");
        parts.bindText(1, table_);
        while (parts.step()) {
            constexpr double expression = -2;
            if (parts.number(2) == expression) {
                refuse("has an index of expressions, '" + std::string(parts.text(0)) + "'");
            }
            if (parts.number(1) != 0) {
                requireIndexOfFolders(parts.text(0));
            }
        }
    }

private:
    void requireTable(std::string_view type, std::string_view definition) const {
        constexpr std::string_view plainTable = "create table";
        if (type != "table") {
            refuse("is a view");
        }
        if (!platform::equalIgnoringAsciiCase(definition.substr(0, plainTable.size()), plainTable)) {
            refuse("is a virtual table");
        }
    }

    void requireStoredColumns() const {
        Statement columns = connection_.prepare("select name from pragma_table_xinfo(?1) where hidden<>0");
        columns.bindText(1, table_);
        if (columns.step()) {
            refuse("has a generated column, '" + std::string(columns.text(0)) + "'");
        }
    }

    // What follows "where" is the template's, or that of an earlier one; there may be other blanks.
    void requireIndexOfFolders(std::string_view index) {
        constexpr std::array<std::string_view, 2> ofFolders{"whereisfolder+0=1",
                                                            "wheresubstr(fullpath,-1)='\\'"};
        Statement row = connection_.prepare("select sql from sqlite_master where type='index' and name=?1");
        row.bindText(1, index);
        std::string definition;
        if (row.step()) {
            for (const char letter : row.text(0)) {
                if (letter != ' ' && letter != '\n') {
                    definition += platform::asciiLower(letter);
                }
            }
        }
        const std::string condition =
            definition.substr(std::min(definition.find("where"), definition.size()));
        if (std::find(ofFolders.begin(), ofFolders.end(), condition) == ofFolders.end()) {
            refuse("has an index of some of its rows, '" + std::string(index) + "'");
        }
    }

    [[noreturn]] void refuse(const std::string& reason) const {
        throw fault(databaseError::damaged,
                    "The database is not a saved scan; its table '" + std::string(table_) + "' " + reason);
    }

    [[nodiscard]] RuntimeError fault(int number, const std::string& cause) const {
        return platform::fileError(number, cause, connection_.path(), platform::NotDone::loaded);
    }

    Connection& connection_;
    std::string_view table_;
};

} // namespace

void Database::requireStored(std::string_view table) {
    TableCheck check(open().connection, table);
    check.requirePlain();
    check.requirePlainIndexes();
}

std::unique_ptr<Recordset> Database::OpenStored(std::string_view table) {
    Connection& connection = open().connection;
    TableCheck(connection, table).requirePlain();
    // An index might hold other values than the table.
    const std::string rows = "from " + modGlobal::quoted(table) + " not indexed";
    return std::unique_ptr<Recordset>(new Recordset(std::make_unique<Recordset::Implementation>(
        connection, connection.prepare("select * " + rows), "select count(*) " + rows)));
}
