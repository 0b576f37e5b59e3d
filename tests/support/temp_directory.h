// A fresh directory for one test, removed with its contents at the end.
#ifndef SEALKEEPER_TESTS_SUPPORT_TEMP_DIRECTORY_H
#define SEALKEEPER_TESTS_SUPPORT_TEMP_DIRECTORY_H

#include <string>

namespace sealkeeper::test {

class TempDirectory {
  public:
    TempDirectory();
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;
    ~TempDirectory();

    // Absolute, without a trailing separator.
    [[nodiscard]] const std::string& Path() const { return path_; }
    // The path of `name` in the directory.
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return path_ + "/" + name;
    }

    // Writes a file, creates the directories in its name, and returns its path.
    std::string WriteFile(const std::string& name, const std::string& content) const;

    // Writes an existing file anew until its modification time changes, since file system clocks
    // may be coarse. Meanwhile a reader may see it empty.
    void RewriteFile(const std::string& name, const std::string& content) const;

  private:
    std::string path_;
};

// Changes the current directory of the process, and changes it back at the end of the scope.
class ScopedCurrentDirectory {
  public:
    explicit ScopedCurrentDirectory(const std::string& directory);
    ScopedCurrentDirectory(const ScopedCurrentDirectory&) = delete;
    ScopedCurrentDirectory& operator=(const ScopedCurrentDirectory&) = delete;
    ~ScopedCurrentDirectory();

  private:
    std::string previous_;
};

// The content of the file at `path`. The test fails if it cannot be read.
[[nodiscard]] std::string ReadFile(const std::string& path);

}  // namespace sealkeeper::test

#endif
