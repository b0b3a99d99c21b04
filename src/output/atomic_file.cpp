#include "output/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <system_error>
#include <utility>

namespace kavit {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissionBits = 07777;
constexpr mode_t kDefaultMode = 0666;  // less what the umask takes
constexpr int kMaxLinks = 40;
constexpr int kNameTries = 1000;

class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() { (void)Close(); }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    [[nodiscard]] bool IsOpen() const { return fd_ >= 0; }
    [[nodiscard]] int Get() const { return fd_; }
    // False with errno set; the last word of a network disk on what was written.
    bool Close() { return fd_ < 0 || close(std::exchange(fd_, -1)) == 0; }

  private:
    int fd_;
};

std::string Fault(const fs::path& path, int error, const std::string& where = "") {
    return "Can't write \"" + path.string() + "\": " + where +
           std::generic_category().message(error);
}

bool WriteAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t done = write(fd, content.data(), content.size());
        if (done < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(done));
    }
    return true;
}

// Some file systems cannot force a file to the disk; they are used as they are.
bool ForceToDisk(int fd) {
    return fsync(fd) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

// The file that a chain of symbolic links ends at, which need not exist; nothing for a ring.
std::optional<fs::path> FollowLinks(fs::path path) {
    for (int i = 0; i < kMaxLinks; ++i) {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error) return path;  // no link, or not there
        path = path.parent_path() / next;
    }
    return std::nullopt;
}

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// A new file beside the target. Its name does not grow with the target's, so that it is never the
// one that is too long.
Descriptor MakeTemporary(const fs::path& folder, mode_t mode, fs::path& name) {
    for (int i = 0; i < kNameTries; ++i) {
        name = folder / (".kavit-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp");
        Descriptor file(open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.IsOpen() || errno != EEXIST) return file;
    }
    return Descriptor(-1);
}

// Writes the temporary file and puts it in the target's place; errno says what failed.
bool FillAndRename(Descriptor& file, const fs::path& temporary, const fs::path& target,
                   const struct stat* old, std::string_view content) {
    if (old != nullptr) {
        // Another owner can be kept by an administrator only; the permissions matter more.
        if (fchown(file.Get(), old->st_uid, old->st_gid) != 0) errno = 0;
        if (fchmod(file.Get(), old->st_mode & kPermissionBits) != 0) return false;
    }
    return WriteAll(file.Get(), content) && ForceToDisk(file.Get()) && file.Close() &&
           std::rename(temporary.c_str(), target.c_str()) == 0;
}

std::string WriteOpened(const fs::path& path, int flags, std::string_view content) {
    Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, kDefaultMode));
    if (!file.IsOpen() || !WriteAll(file.Get(), content) || !file.Close()) {
        return Fault(path, errno);
    }
    return "";
}

}  // namespace

std::string WriteWholeFile(const fs::path& path, std::string_view content) {
    if (path.empty()) return "Can't write a file without a name";
    struct stat old {};
    const bool exists = stat(path.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return Fault(path, errno);
    if (exists ? S_ISDIR(old.st_mode) : !path.has_filename()) return Fault(path, EISDIR);
    if (exists && !S_ISREG(old.st_mode)) return WriteOpened(path, 0, content);
    const std::optional<fs::path> target = FollowLinks(path);
    if (!target) return Fault(path, ELOOP);
    // Replacing a file needs no permission on the file itself; who made it read-only means it.
    if (exists && faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) {
        return Fault(path, errno);
    }

    const fs::path folder = FolderOf(*target);
    fs::path temporary;
    Descriptor file =
        MakeTemporary(folder, exists ? old.st_mode & kDefaultMode : kDefaultMode, temporary);
    if (!file.IsOpen()) return Fault(path, errno, "folder \"" + folder.string() + "\": ");
    if (!FillAndRename(file, temporary, *target, exists ? &old : nullptr, content)) {
        const int error = errno;
        (void)unlink(temporary.c_str());
        return Fault(path, error);
    }
    // The new name reaches the disk with the folder; the file itself is whole already.
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen()) (void)fsync(opened.Get());
    return "";
}

std::string AppendToFile(const fs::path& path, std::string_view content) {
    if (path.empty()) return "Can't write a file without a name";
    return WriteOpened(path, O_CREAT | O_APPEND, content);
}

}  // namespace kavit
