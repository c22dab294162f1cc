#include <gtest/gtest.h>

#include "db/dao.h"
#include "db/jetLike.h"
#include "db/jetTranslator.h"
#include "platform/runtimeError.h"

namespace {

TEST(JetTranslator, givesShapesWithTheLiteralsTakenOut) {
    struct Case {
        const char *statement, *shape, *literals;
    };
    const Case cases[] = {
        {"delete * from details", " delete from details", ""},
        {"select * from nodes where parentIndex=-1;", " select * from nodes where parentIndex = - 1", ""},
        {"select [drive] & [fullPath] from t",
         " select ( ifnull( \"drive\", '') || ifnull( \"fullPath\", '')) from t", ""},
        {"select a & \"x\" & b+c from t",
         " select ( ifnull( a, '') || ifnull( ?1, '') || ifnull( b + c, '')) from t", "x"},
        {"select x from t where (a & b) Like \"c:\\*\" and -d & e = 7",
         " select x from t where ( ( ifnull( a, '') || ifnull( b, '')) ) Like ?1 and"
         " ( ifnull( - d, '') || ifnull( e, '')) = ?2",
         "c:\\*,7"},
        {"SELECT Left(a,12)=\"x\" FROM t left join u on t.a=u.a",
         " SELECT jetLeft ( a , ?1 ) = ?2 FROM t left join u on t. a = u. a", "12,x"},
        {"select a from t where b=\"say \"\"hi\"\"\" or b='it''s'", " select a from t where b = ?1 or b = ?2",
         "say \"hi\",it's"},
        {"select x from t where fullPath=\"a\\b\\\" and drive=\"/\\\"",
         " select x from t where ( fullPath = ?1 and substr(fullPath, -1) = '\\') and drive = ?2",
         "a\\b\\,/\\"},
        {"update t set fullPath=\"a\\\" where fullPath=\"a\"",
         " update t set fullPath = ?1 where fullPath = ?2", "a\\,a"},
        {"insert into t (a,b) values (1,NULL)", " insert into t ( a , b ) values ( 1 , NULL )", ""},
    };
    JetTranslator translator;
    for (const Case& c : cases) {
        translator.translate(c.statement);
        std::string literals;
        for (const auto& literal : translator.literals()) {
            literals += literals.empty() ? "" : ",";
            if (const auto* text = std::get_if<std::string_view>(&literal)) {
                literals += *text;
            } else {
                appendNumber(literals, std::get<double>(literal));
            }
        }
        EXPECT_EQ(translator.shape(), c.shape);
        EXPECT_EQ(literals, c.literals);
        EXPECT_EQ(translator.targetFile(), "");
    }
    translator.translate("Insert into details in '/\\tmp\\x.dat' select * from details order by idx");
    EXPECT_EQ(translator.targetFile(), "/\\tmp\\x.dat");
    EXPECT_EQ(translator.targetTable(), "details");
    EXPECT_EQ(translator.shape().substr(0, translator.lengthWithoutOrder()), " select * from details");
}

TEST(JetTranslator, hasTextsComparedAsItIsTold) {
    JetTranslator translator("nocase");
    translator.translate("select a from t where a & b = \"x\" and fullPath = \"a\\\" and c = 2");
    EXPECT_EQ(translator.shape(),
              " select a from t where ( ifnull( a, '') || ifnull( b, '')) = ?1 collate nocase and"
              " ( fullPath = ?2 collate nocase and substr(fullPath, -1) = '\\') and c = ?3");
}

TEST(JetTranslator, refusesWhatIsNoStatement) {
    for (const char* statement :
         {"", "drop table details", "attach 'x' as y", "select a from t where b='O'Brien'",
          "select \"a from t", "select [a from t", "select (a from t", "select a) from t",
          "select a & from t", "select & a from t", "select a; select b", "select a from t where b={x}",
          "insert details", "insert into t in details select *", "insert into t in 'x' values (1)",
          "select 1.2.3"}) {
        JetTranslator translator;
        try {
            translator.translate(statement);
            ADD_FAILURE() << statement;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), databaseError::syntax) << statement;
        }
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
    EXPECT_FALSE(jetLike(longText, "*a*a*a*a*b")) << "and in reasonable time";
}

} // namespace
