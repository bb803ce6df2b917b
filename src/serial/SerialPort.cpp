#include "serial/SerialPort.h"

#include <fcntl.h>
#include <unistd.h>

#include "core/FileDescriptor.h"

namespace orx {
namespace {

class TerminalPort final : public SerialPort {
  public:
    int open(const std::string& device) override {
        descriptor = FileDescriptor(::open(device.c_str(), O_RDWR));
        return descriptor.get();
    }

    void setAttributes(const termios& attributes) override {
        ::tcsetattr(descriptor.get(), TCSANOW, &attributes);
    }

    ssize_t write(std::string_view bytes) override {
        return ::write(descriptor.get(), bytes.data(), bytes.size());
    }

    void drain() override { ::tcdrain(descriptor.get()); }

    ssize_t read(std::span<char> buffer) override {
        return ::read(descriptor.get(), buffer.data(), buffer.size());
    }

  private:
    FileDescriptor descriptor;
};

}  // namespace

std::unique_ptr<SerialPort> makeTerminalPort() {
    return std::make_unique<TerminalPort>();
}

}  // namespace orx
