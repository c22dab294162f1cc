#pragma once

#include <string>
#include <utility>
#include <vector>

// The names and values in a Properties box, as they are on the disk.
using PropertyRows = std::vector<std::pair<std::string, std::string>>;
