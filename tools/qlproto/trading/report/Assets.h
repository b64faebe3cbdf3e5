// The parts of the report page, as the build took them from this folder: page.html, and what its {{name}} stand for.
#pragma once

#include <cstddef>
#include <string_view>

namespace qlproto {

struct ReportAsset {
    std::string_view name; ///< of the file
    std::string_view text;
};

/// The page comes first.
inline constexpr std::size_t REPORT_ASSET_COUNT = 6;
extern const ReportAsset REPORT_ASSETS[REPORT_ASSET_COUNT];

} // namespace qlproto
