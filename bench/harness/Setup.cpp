#include "harness/Setup.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "core/InstallPrefix.h"
#include "harness/Images.h"

namespace orx::bench {
namespace {

constexpr std::size_t full = 65'000;  // offsets in the file have 16 bits

/// The log of the daemons, and all else that must cost no disk.
test::TemporaryFolder folderInMemory() {
    constexpr const char* inMemory = "/dev/shm";
    if (::access(inMemory, W_OK) == 0) ::setenv("TMPDIR", inMemory, 1);
    return {};
}

bool isInMemory(const std::filesystem::path& folder) {
    struct statfs system {};
    return ::statfs(folder.c_str(), &system) == 0 && system.f_type == TMPFS_MAGIC;
}

void write(const std::string& name, const std::string& content) {
    const auto path = std::filesystem::path(INSTALL_PREFIX) / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

Setup::Setup() : memory(folderInMemory()) {
    if (!isInMemory(memory.path())) std::cerr << "There is no file system in memory.\n";
    std::filesystem::create_directories(INSTALL_PREFIX);
    if (isInMemory(INSTALL_PREFIX)) std::cerr << "The build does not stand on a disk.\n";
    write("lib/small.ccd", definitions(0).bytes());
    write("lib/full.ccd", definitions(full).bytes());
    write("var/lensmemory.cfg", "zoommax = " + std::to_string(zoomSteps) + "\nfocusmax = 100\n");
}

Setup::~Setup() {
    std::error_code ignored;
    std::filesystem::remove_all(INSTALL_PREFIX, ignored);
}

std::string Setup::onDisk(const std::string& name) const {
    return INSTALL_PREFIX + "/var/" + name;
}

std::vector<std::string> Setup::command(const DaemonSetup& daemon) const {
    static int number = 0;
    const auto name = "daemon" + std::to_string(++number);
    std::string channels;
    for (const int port : daemon.ports)
        channels += (channels.empty() ? "127.0.0.1:" : ",127.0.0.1:") + std::to_string(port);
    const auto log = daemon.log.empty() ? inMemory(name + ".log") : daemon.log;
    const auto line =
        daemon.device.empty() ? "serial.debug = 2\n" : "serial.device = " + daemon.device + "\n";
    return {ORX_EXECUTABLE,
            memory.write(name + ".cfg", "controlchannel = " + channels + "\nlogfile = " + log +
                                            "\ndefinitionfile = " + INSTALL_PREFIX + "/lib/" +
                                            daemon.definitions + ".ccd\nprojector = BENCH\n" +
                                            line + "serial.timeout = 0\nserial.delay = " +
                                            std::to_string(daemon.delay) + "\n")};
}

std::vector<std::string> Setup::limit(const std::string& name, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), std::string(ORX_LIMITS_FOLDER).append("/").append(name));
    return arguments;
}

std::vector<std::string> Setup::ownRuntime() const {
    const auto folder = inMemory("runtime");
    std::filesystem::create_directories(folder);
    for (const std::filesystem::path library : {ORX_CXX_LIBRARY, ORX_COMPILER_LIBRARY}) {
        std::filesystem::copy_file(library, folder / library.filename(),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    return {"LD_LIBRARY_PATH=" + folder};
}

}  // namespace orx::bench
