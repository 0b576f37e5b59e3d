# A formula for a tap. Set `url` and `sha256` to the release that you publish, and give the trust
# material of your authority when it is installed:
#
#     HOMEBREW_SEALKEEPER_TRUST_CA=/path/ca.der HOMEBREW_SEALKEEPER_TRUST_CRL=/path/crl.der \
#         brew install YOUR/TAP/sealkeeper
#
# Both are built in: after a new list, run `brew reinstall` in the same way.
#
# `--HEAD` with neither builds a program that trusts the development authority, to try it out.
class Sealkeeper < Formula
  desc "Signs and verifies the hash catalogues of games"
  homepage "https://sealkeeper.example"
  url "https://sealkeeper.example/releases/sealkeeper-2.2.0.tar.gz"
  sha256 "0000000000000000000000000000000000000000000000000000000000000000"
  license "Apache-2.0"
  head "https://sealkeeper.example/sealkeeper.git", branch: "main"

  depends_on "cli11" => :build
  depends_on "cmake" => :build
  depends_on "ninja" => :build
  depends_on "nlohmann-json" => :build
  depends_on "scdoc" => :build
  depends_on macos: :sonoma
  depends_on "mbedtls@3"
  depends_on "pugixml"

  def install
    ca = ENV["HOMEBREW_SEALKEEPER_TRUST_CA"]
    crl = ENV["HOMEBREW_SEALKEEPER_TRUST_CRL"]
    odie "Set HOMEBREW_SEALKEEPER_TRUST_CA and HOMEBREW_SEALKEEPER_TRUST_CRL." if !build.head? && !(ca && crl)

    args = %W[
      -DSEALKEEPER_BUILD_TESTS=OFF
      -DCMAKE_PREFIX_PATH=#{Formula["mbedtls@3"].opt_prefix}
    ]
    args += %W[-DSEALKEEPER_REQUIRE_OWN_TRUST=ON -DSEALKEEPER_TRUST_CA=#{ca} -DSEALKEEPER_TRUST_CRL=#{crl}] if ca && crl
    system "cmake", "-S", ".", "-B", "build", "-G", "Ninja", *args, *std_cmake_args
    system "cmake", "--build", "build"
    system "cmake", "--install", "build"
  end

  def caveats
    <<~EOS
      The authority and its revocation list are built in. After a new list, run "brew reinstall sealkeeper" with
      HOMEBREW_SEALKEEPER_TRUST_CA and HOMEBREW_SEALKEEPER_TRUST_CRL set: "brew upgrade" sees no new version.
    EOS
  end

  test do
    assert_match "Anti-Cheat Sealkeeper v#{version}", shell_output("#{bin}/sealkeeper -h", 1) unless build.head?
    assert_match "sealkeeper-inspect", shell_output("#{bin}/sealkeeper-inspect --version")
  end
end
