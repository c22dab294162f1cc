// A statement in the Jet dialect: it is refused with one of the engine's numbers, or runs on an empty
// database. None changes more than rows, and values never become part of the engine's text.

#include <algorithm>
#include <array>

#include "db/dao.h"
#include "db/jetTranslator.h"
#include "db/values.h"
#include "fuzz/support/input.h"
#include "fuzz/support/require.h"
#include "fuzz/support/rootPath.h"
#include "platform/files.h"
#include "support/expected.h"
#include "support/temporaryFolder.h"

namespace {

constexpr int statementsPerDatabase = 500; // each new one is kept prepared

class EmptyDatabase {
public:
    EmptyDatabase() { platform::copyFile(templateFile(), rootPath(folder_, "main.dat")); }

    Database& get() {
        if (uses_++ % statementsPerDatabase == 0) {
            database_.reset();
            database_ = DBEngine::OpenDatabase(rootPath(folder_, "main.dat"));
        }
        return *database_;
    }

private:
    TemporaryFolder folder_;
    std::unique_ptr<Database> database_;
    int uses_ = 0;
};

// The engine lists tables and the like there.
std::string structureOf(Database& database) {
    std::string text;
    const auto rows = database.OpenRecordset("select [type], [name], [sql] from sqlite_master");
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        for (int i = 0; i < rows->FieldCount(); ++i) {
            text.append(rows->Fields(i).text()).append("\n");
        }
    }
    return text;
}

void run(Database& database, std::string_view statement) {
    constexpr int mostRows = 20;
    if (platform::equalIgnoringAsciiCase(platform::trimmed(statement).substr(0, 6), "select")) {
        const auto rows = database.OpenRecordset(statement);
        for (int row = 0; row < mostRows && !rows->EndOfFile(); ++row) {
            for (int i = 0; i < rows->FieldCount(); ++i) {
                static_cast<void>(rows->Fields(i).value());
            }
            rows->MoveNext();
        }
    } else {
        database.Execute(statement);
    }
}

bool isNumberOfEngine(int number) {
    using namespace databaseError;
    constexpr std::array known{syntax,       missingValue, noSuchTable, noSuchField,
                               duplicateKey, engine,       readOnly,    damaged};
    return std::find(known.begin(), known.end(), number) != known.end();
}

// Outside of names in double quotes, the engine's text has no quotes, comments or ends of statements.
void requireBareShape(std::string_view shape, std::size_t literals) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        isQuoted = isQuoted != (shape[i] == '"');
        if (!isQuoted) {
            const std::string_view two = shape.substr(i, 2);
            require(two != "--" && two != "/*" && shape[i] != ';' && shape[i] != '\0', "no other statement");
            require(shape[i] != '\'' || two == "''" || shape.substr(i - 1, 2) == "''",
                    "no text but the empty one");
        }
    }
    require(!isQuoted, "names are closed");
    require(literals <= shape.size() / 3, "each literal has its parameter");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Input(data, size).rest();

    const std::string quoted = "select " + modGlobal::quoted(text);
    JetTranslator translator;
    translator.translate(quoted);
    require(translator.literals().size() == 1 && std::get<std::string_view>(translator.literals()[0]) == text,
            "a quoted text is one value");

    try {
        translator.translate(text);
        requireBareShape(translator.shape(), translator.literals().size());
    } catch (const RuntimeError& error) {
        require(error.number() == databaseError::syntax, "a refused statement is a wrong one");
        return -1; // not kept in the corpus
    }

    static EmptyDatabase empty;
    Database& database = empty.get();
    static const std::string structure = structureOf(database);
    {
        const SmallTransaction undone(database);
        try {
            run(database, text);
        } catch (const RuntimeError& error) {
            require(isNumberOfEngine(error.number()), "a number of the engine");
        }
        require(structureOf(database) == structure, "no statement changes the tables");
    }
    const auto left = database.OpenRecordset("select count(*) as total from details");
    require(left->Fields(0).number() == 0, "everything was undone");
    return 0;
}
