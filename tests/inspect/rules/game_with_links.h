// A game with links, some of which leave it. It is the current directory.
#ifndef SEALKEEPER_TESTS_INSPECT_RULES_GAME_WITH_LINKS_H
#define SEALKEEPER_TESTS_INSPECT_RULES_GAME_WITH_LINKS_H

#include <filesystem>
#include <optional>

#include "support/temp_directory.h"

namespace sealkeeper::test {

class GameWithLinks {
  public:
    GameWithLinks() {
        namespace fs = std::filesystem;
        directory_.WriteFile("beside/x", "1");
        directory_.WriteFile("game/real/y", "1");
        fs::create_directory_symlink(directory_ / "beside", directory_ / "game/out");
        fs::create_directory_symlink("../beside", directory_ / "game/relative");
        fs::create_directory_symlink(directory_ / "game/real", directory_ / "game/inside");
        fs::create_directory_symlink("out", directory_ / "game/twice");
        // Its path begins with the path of the game.
        directory_.WriteFile("game2/z", "1");
        fs::create_directory_symlink("../game2", directory_ / "game/neighbour");
        here_.emplace(directory_ / "game");
    }

  private:
    TempDirectory directory_;
    std::optional<ScopedCurrentDirectory> here_;
};

}  // namespace sealkeeper::test

#endif
