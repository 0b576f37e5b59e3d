#include "inspect/check/game_additions.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>

#include "app/certificates_directory.h"
#include "app/command_line_options.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/certificate_path.h"
#include "inspect/check/listed_paths.h"
#include "inspect/check/sealed_links.h"
#include "inspect/check/unlisted_files.h"
#include "inspect/report/unread_reason.h"
#include "platform/file_system.h"
#include "runtime/runtime_configuration_writer.h"

namespace sealkeeper {
namespace {

std::string RuntimeConfigurationPath() {
    return std::string(kCertificatesDirectory) + kRuntimeConfigurationFileName;
}

// Everything that verify looks at: the listed files, the catalogues with their certificates, and
// runtime.conf.
std::vector<std::string> VerifiedPaths(const CheckReport& report) {
    std::vector<std::string> paths;
    for (const CheckedFile& file : report.files) {
        paths.push_back(file.path);
    }
    for (const CheckedCatalogue& catalogue : report.catalogues) {
        const std::string path = kCertificatesDirectory + catalogue.name;
        paths.push_back(path);
        paths.push_back(CertificatePathOf(path).value_or(path));
    }
    paths.push_back(RuntimeConfigurationPath());
    return paths;
}

bool HasMainCatalogue(const CheckReport& report) {
    return std::any_of(
        report.catalogues.begin(), report.catalogues.end(), [](const CheckedCatalogue& catalogue) {
            return catalogue.name == std::string(kMainCatalogueName) + kCatalogueExtension;
        });
}

// Reports a runtime.conf that was not read. Mods have none.
void AddRuntimeConfiguration(const CheckReport& report, std::vector<Addition>& additions) {
    if (report.runtimeConfiguration != RuntimeConfigurationVerdict::NotRead) {
        return;
    }
    const std::string path = RuntimeConfigurationPath();
    if (GetFileType(path) != FileType::Missing) {
        additions.push_back(
            {AdditionKind::UnreadableRuntimeConfiguration, path, {}, 0, UnreadReason(path)});
    } else if (HasMainCatalogue(report)) {
        additions.push_back({AdditionKind::MissingRuntimeConfiguration, path, {}, 0, {}});
    }
}

void Append(std::vector<Addition> more, std::vector<Addition>& additions) {
    additions.insert(additions.end(), std::make_move_iterator(more.begin()),
                     std::make_move_iterator(more.end()));
}

}  // namespace

std::vector<Addition> FindAdditions(const CheckReport& report, const std::string& gameDirectory) {
    ListedPaths listed(gameDirectory);
    SealedLinks links;
    for (const std::string& path : VerifiedPaths(report)) {
        listed.Add(path);
        links.LookOnTheWayTo(path);
    }
    std::vector<Addition> additions = links.Additions();
    for (const Addition& link : additions) {
        listed.Add(link.path);
    }
    Append(FindUnlistedFiles(listed), additions);
    AddRuntimeConfiguration(report, additions);
    std::sort(additions.begin(), additions.end(), [](const Addition& left, const Addition& right) {
        return std::tie(left.kind, left.path) < std::tie(right.kind, right.path);
    });
    return additions;
}

}  // namespace sealkeeper
