#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/dao.h"
#include "db/jetLike.h"
#include "db/jetTranslator.h"
#include "platform/files.h"
#include "platform/runtimeError.h"
#include "support/errorNumberOf.h"
#include "support/expected.h"
#include "support/temporaryFolder.h"

namespace {

TEST(Jet, findsTheRowsThatTheDialectMeans) {
    const TemporaryFolder folder;
    platform::copyFile(templateFile(), folder.typed("x.dat"));
    const auto database = DBEngine::OpenDatabase(folder.typed("x.dat"));
    for (const char* row : {R"(1,"/\","a\b\","b\",10,NULL)", R"(2,"/\","a\b","b",7,"me")",
                            R"(3,"/\","it's ""x""",'it''s "x"',-3,"me")", R"(4,"c:\","a\b\","b\",7,NULL)"}) {
        database->Execute(
            std::string("insert into details (idx,drive,fullPath,fileName,size,owner) values (") + row +
            ");");
    }
    const std::pair<const char*, const char*> cases[] = {
        {R"(fullPath="a\b\" and drive="/\")", "1"},
        {R"(drive="c:\" and fullPath="a\b\")", "4"},
        {R"([drive] & [fullPath]="/\a\b\")", "1"},
        {R"((drive & fullPath) Like "/\a*")", "12"},
        {R"(Left([drive] & [fullPath],5)="/\a\b")", "12"},
        {R"(owner & "x"="x")", "14"},
        {R"(-idx & fileName="-2b")", "2"},
        {R"([size]+1*2=9)", "24"},
        {R"(fileName="it's ""x""")", "3"},
        {R"(fileName='it''s "x"')", "3"},
        {R"(size=-3 or (idx=1))", "13"},
        {R"(details.idx in (select b.idx from details as a left join details as b on a.idx=b.idx+2))", "12"},
    };
    const auto found = [&](const std::string& condition) {
        std::string indexes;
        const auto rows =
            database->OpenRecordset("select * from details where " + condition + " order by idx;");
        for (; !rows->EndOfFile(); rows->MoveNext()) {
            indexes += rows->Fields("idx").text();
        }
        return indexes;
    };
    for (const auto& [condition, indexes] : cases) {
        EXPECT_EQ(found(condition), indexes) << condition;
    }
    EXPECT_EQ(database->Execute(R"(update details set fullPath="z\" where fullPath="a\b")"), 1);
    EXPECT_EQ(found(R"(fullPath="z\")"), "2");
    EXPECT_EQ(database->Execute("delete * from details where size<0"), 1);
    EXPECT_EQ(found("1=1"), "124");
}

TEST(JetTranslator, givesStatementsThatDifferInValuesOneShape) {
    JetTranslator translator;
    translator.translate(R"(select idx from details where owner="a" and size=5)");
    const std::string shape = translator.shape();
    translator.translate(R"(select idx from details where owner="say ""hi""" and size=12.5)");
    EXPECT_EQ(translator.shape(), shape);
    EXPECT_THAT(translator.literals(), testing::ElementsAre(JetTranslator::Literal("say \"hi\""), 12.5));
}

TEST(JetTranslator, tellsWhereTheOrderBegins) {
    JetTranslator translator;
    translator.translate("select a from t order by a");
    EXPECT_EQ(translator.shape().substr(0, translator.lengthWithoutOrder()), " select a from t");
}

TEST(JetTranslator, hasTextsComparedAsItIsTold) {
    JetTranslator translator("nocase");
    translator.translate("select a from t where a & b = \"x\" and fullPath = \"a\\\" and c = 2");
    for (const char* const part : {"?1 collate nocase and", "?2 collate nocase and"}) {
        EXPECT_THAT(translator.shape(), testing::HasSubstr(part));
    }
    EXPECT_THAT(translator.shape(), testing::EndsWith("?3")) << "a number is no text";
}

TEST(JetTranslator, refusesWhatIsNoStatement) {
    for (const char* statement :
         {"",
          "drop table details",
          "attach 'x' as y",
          "select a from t where b='O'Brien'",
          "select \"a from t",
          "select [a from t",
          "select (a from t",
          "select a) from t",
          "select a & from t",
          "select & a from t",
          "select a; select b",
          "select a from t where b={x}",
          "select 1.2.3",
          "select a from t where exists (with recursive r(x) as (select 1) select x from r)",
          "select a from t where a in (select 1 union select 2)",
          "select a from pragma_table_info(\"t\")",
          "select randomblob(9) from t",
          "select [randomblob](9) from t",
          "select a from t where a glob \"b\"",
          "select case when 1 then 2 end",
          "insert into t default values"}) {
        JetTranslator translator;
        try {
            translator.translate(statement);
            ADD_FAILURE() << statement;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), databaseError::syntax) << statement;
        }
    }
}

TEST(JetTranslator, refusesWhatIsNestedTooDeep) {
    const auto repeated = [](const char* part, std::size_t times) {
        std::string result;
        for (std::size_t i = 0; i < times; ++i) {
            result += part;
        }
        return result;
    };
    for (const auto& [opening, closing] : {std::pair("(", ")"), {"min(", ")"}, {"-", ""}, {"(1+-(", "))"}}) {
        const auto nested = [&repeated, open = opening, close = closing](std::size_t depth) {
            return "select " + repeated(open, depth) + "a" + repeated(close, depth) + " from t";
        };
        JetTranslator translator;
        EXPECT_EQ(errorNumberOf([&] { translator.translate(nested(30'000)); }), databaseError::syntax);
        EXPECT_EQ(errorNumberOf([&] { translator.translate(nested(25)); }), 0) << "the next one is read";
    }
}

TEST(JetLike, matchesItsWildcards) {
    struct Case {
        const char *text, *pattern;
        bool matches;
    };
    const Case cases[] = {
        {"", "", true},
        {"", "*", true},
        {"abc", "abc", true},
        {"abc", "ab", false},
        {"abc", "ABC", false},
        {"abc", "a*", true},
        {"abc", "*c", true},
        {"abc", "*b*", true},
        {"abc", "a*b", false},
        {"aXbXc", "a*X*c", true},
        {"mississippi", "*iss*ippi", true},
        {"abc", "a?c", true},
        {"a\xC3\xA9"
         "c",
         "a?c", true},
        {"ac", "a?c", false},
        {"a7", "a#", true},
        {"ax", "a#", false},
        {"b", "[a-c]", true},
        {"d", "[a-c]", false},
        {"d", "[!a-c]", true},
        {"a", "[!a-c]", false},
        {"-", "[a-]", true},
        {"x", "[]", false},
        {"[", "[", true},
        {"*", "[*]", true},
        {"a*b", "a[*]b", true},
        {"aXb", "a[*]b", false},
        {"", "?", false},
        {"\xC3\xA9", "[\xC3\xA0-\xC3\xBF]", true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(jetLike(c.text, c.pattern), c.matches) << c.text << " like " << c.pattern;
    }
    for (const auto& [text, pattern] :
         {std::pair("C:\\Users\\x", "c:\\uSERS\\*"), {"\u00C4", "\u00E4"}, {"B", "[a-c]"}}) {
        EXPECT_TRUE(jetLikeIgnoringCase(text, pattern)) << text << " like " << pattern;
        EXPECT_FALSE(jetLike(text, pattern)) << text << " like " << pattern;
    }
    const std::string longText(20000, 'a');
    const std::string name = "x[1] [!a-z] C# 50*?! ]";
    EXPECT_TRUE(jetLike(name, jetLiteral(name)));
    EXPECT_FALSE(jetLike("x1 b C5 50!", jetLiteral(name)));
    EXPECT_FALSE(jetLike(longText, "*a*a*a*a*b")) << "and in reasonable time";
}

} // namespace
