#pragma once

#include <string_view>

// How an overview page looks, and the little that its script does: it sorts tables, and opens what a link
// leads to.
namespace modExport {

extern const std::string_view overviewStyle;
extern const std::string_view overviewScript;

// The page's content security policy, which allows these two and nothing else.
extern const std::string_view overviewPolicy;

} // namespace modExport
