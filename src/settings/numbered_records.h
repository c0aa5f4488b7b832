// The layout the profile and fuel files share: section "GENERAL" holds "Count" and the keys "1"
// to Count, each a comma-separated record.
#pragma once

#include "foundation/ini_file.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

using RecordFields = std::vector<std::string>;

// Reads "Count" strictly (empty or non-numeric text throws, see strictToLong) and hands each of
// keys "1" to Count that splits into at least `minimumFields` fields to `accept`, in key order.
// Missing, empty, short and unsplittable keys are skipped and later keys are still read; a count
// below 1 reads nothing.
void readNumberedRecords(const TTLIniFile& ini, std::size_t minimumFields,
                         const std::function<void(const RecordFields&)>& accept);
