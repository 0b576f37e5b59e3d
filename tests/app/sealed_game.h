// An installed game with two catalogues: base.bin lists "a" and "b/c", mod.bin "m".
#ifndef SEALKEEPER_TESTS_APP_SEALED_GAME_H
#define SEALKEEPER_TESTS_APP_SEALED_GAME_H

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/command_line_options.h"
#include "catalogue/hash_catalogue.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper::test {

// Seals `files` of `game`, the current directory, in a catalogue `name` with the certificate
// beside.
inline void Seal(const TempDirectory& game, const std::string& name, std::vector<FoundFile> files) {
    PrivateKey key;
    LoadKey("good", key);
    const CapturedOutput output;
    game.WriteFile("Quorvane/Certificates/" + name + ".cer", ReadFile(CertificatePath("good")));
    HashCatalogue catalogue(kTestProductId);
    ASSERT_EQ(catalogue.CreateCatalogue(
                  key.Get(), {}, std::move(files),
                  L"Quorvane/Certificates/" + std::wstring(name.begin(), name.end()) + L".bin", {}),
              ResultCode::Ok);
}

// Writes the three files into `game`, the current directory, and seals them. Also makes a
// runtime.conf in "settings", which is not yet part of the game.
inline void SealGame(const TempDirectory& game) {
    for (const std::string name : {"a", "b/c", "m"}) {
        game.WriteFile(name, "content of " + name);
    }
    Seal(game, "base", {{L"a", {}}, {L"b/c", {}}});
    Seal(game, "mod", {{L"m", {}}});
    PrivateKey key;
    LoadKey("good", key);
    const CapturedOutput output;
    RuntimeConfiguration configuration;
    configuration.version = 1;
    std::filesystem::create_directory(game / "settings");
    ASSERT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), game / "settings/"),
              ResultCode::Ok);
}

// A game in the current directory. It is sealed once and then copied, since signing takes longer
// than most tests.
class SealedGame {
  public:
    SealedGame() {
        static const TempDirectory original;
        if (!std::filesystem::exists(original / "settings")) {
            const ScopedCurrentDirectory there(original.Path());
            SealGame(original);
        }
        std::filesystem::copy(original.Path(), directory_.Path(),
                              std::filesystem::copy_options::recursive);
        std::filesystem::rename("settings/runtime.conf", settings_ / "runtime.conf");
        std::filesystem::remove("settings");
    }

    [[nodiscard]] const TempDirectory& Directory() const { return directory_; }

    void AddRuntimeConfiguration() const {
        std::filesystem::rename(settings_ / "runtime.conf", "Quorvane/Certificates/runtime.conf");
    }

    // Sets the options for verifying it.
    void VerifyBy(CommandLineOptions& options) const {
        options.productId = kTestProductId;
        options.verifyDir = directory_ / "";
    }

  private:
    TempDirectory directory_;
    // Outside the game: holds runtime.conf until it is added.
    TempDirectory settings_;
    ScopedCurrentDirectory here_{directory_.Path()};
};

}  // namespace sealkeeper::test

#endif
