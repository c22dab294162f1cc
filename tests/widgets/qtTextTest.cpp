#include "widgets/qtText.h"

#include <gtest/gtest.h>

#include <utility>

// A name stays on one line and changes nothing beside itself.
TEST(QtText, shownTextHasNoCharacterThatDisturbs) {
    for (const auto& [text, shown] : {std::pair("plain \xC3\xA4 \xD7\x90", u"plain \u00E4 \u05D0"),
                                      {"a\nb\x1B\x7F", u"a\u240Ab\u241B\u2421"},
                                      {"a\u2028b\u2029", u"a\u241Ab\u241A"},
                                      {"\u202Egpj.exe", u"\u241Agpj.exe"},
                                      {"\u2066x\u2069", u"\u241Ax\u241A"}}) {
        EXPECT_EQ(modQt::shownText(text), QString::fromUtf16(shown)) << text;
    }
}
