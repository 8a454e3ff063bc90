#include "filelist/FormatFreeSpace.h"

#include <system_error>

#include "filelist/FormatNumberMask.h"

namespace tav {

std::string freeSpaceTextForBytes(std::uint64_t freeBytes) {
    if (freeBytes >= kFreeSpaceTextLimit) return kMoreThan2GB;
    return formatNumber(static_cast<double>(freeBytes) / 1024.0, kFreeSpaceMask).text;
}

std::string FreeSpaceText(const std::filesystem::path& path, std::string* error) {
    std::error_code ec;
    std::filesystem::path probe = path.empty() ? std::filesystem::current_path(ec) : path;
    while (!probe.empty() && !std::filesystem::exists(probe, ec) && probe.has_parent_path() &&
           probe.parent_path() != probe)
        probe = probe.parent_path();
    const std::filesystem::space_info info = std::filesystem::space(probe, ec);
    if (ec) {
        if (error) *error = ec.message();
        return {};
    }
    return freeSpaceTextForBytes(info.available);
}

}  // namespace tav
