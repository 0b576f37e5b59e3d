#include "app/usage_text.h"

#include "app/console_log.h"

namespace sealkeeper {
namespace {

constexpr const char* kUsageText =
    "Usage: sealkeeper -productid nimbrel_product_id [-v] [verify game_dir] [list path_to_base.bin] [-target_file file] [[-inkey file] [-incert file] [-incrl file] [-outname name] -target_game_dir game_dir config_file]\n\nRun sealkeeper --help for more details\n";

// Deliberately kept as it is: it documents -config_file, which the parser does not know, and shows
// paths with backslashes.
constexpr const char* kHelpText =
    R"(This utility generates signed runtime configuration files which are used to verify file integrity and pass parameters
specific to your game to the anti-cheat.

There are three modes of operation: generate, verify, and list
  Generate (default):
    Given a config file, private key, signed certificate, and optional certificate revocation list, a new catalogue will be created.
    If the certificate is not a mod certificate, a signed runtime configuration file will also be created.

    Args:
      -productid: Nimbrel product identifier.
      -inkey: Private key filename, downloaded from developer portal or generated for mod usage (default 'base_private.key')
      -incert: Certificate filename that corresponds with inkey (default 'base_public.cer')
      -incrl: Optional certificate revocation list to block mod certificates that were previously issued, only applicable for base catalog file
      -outname: Base filename for output, e.g. 'base', 'mod1', etc. (default 'base')
      -target_game_dir: The game distribution's root directory
      -target_file: Ignore config_file and create a catalogue containing this one file only (for packed mods)
      -config_file: config file describing which files to hash (default 'anticheat_sealkeeper.cfg') and additional options to pass to the anti-cheat.

    Examples: sealkeeper -inkey 3f1c9a7be2d84c6a9e05b7d21c4f8a63_private.key -incert 3f1c9a7be2d84c6a9e05b7d21c4f8a63_cert.cer
              sealkeeper -incert mod1.cer -inkey mod1_private.key -outname mod1 mod1.cfg
  Verify:    Given a game root directory containing runtime configuration files, the contents will be verified.

    Args:
      dir: A game's root directory

    Examples: sealkeeper -productid 3f1c9a7be2d84c6a9e05b7d21c4f8a63 verify C:\Games\MyGame
  List:
    Given a generated .bin file, display the path of each file listed in the catalogue.
    Given a generated .conf file, the options passed to the anti-cheat client at runtime will be displayed.

    Args:
      path: Path to .bin file.

    Examples: sealkeeper list C:\Games\MyGame\Quorvane\Certificates\base.bin
              sealkeeper list C:\Games\MyGame\Quorvane\Certificates\runtime.conf

  Universal args:
    --help: Display this usage information and exit
    -productid: The Nimbrel ProductId of the game being worked on
    -v: Verbose mode for troubleshooting

  Issues with using quotes:
    The tool expects that if quotes are being used, they wrap either the option or the associated argument. For example:
      "-productid" "7d2e4b9c1a6f48e0b3c5d8f1a2e7c904" will work, but
      "-productid 7d2e4b9c1a6f48e0b3c5d8f1a2e7c904" will not
)";

}  // namespace

void PrintUsage(HelpText help) {
    WriteUntagged(kUsageText);
    if (help == HelpText::Included) {
        WriteUntagged(kHelpText);
    }
}

}  // namespace sealkeeper
