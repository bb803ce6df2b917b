// One projector model: its command strings, and the way of a command to the serial line.
//
// Used from two threads, the command queue's and the one that steps the lens, without a lock: after
// start-up the tables are only read.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "commands/Command.h"
#include "config/MainConfig.h"
#include "projector/ArgumentDescriptor.h"
#include "serial/SerialConnector.h"
#include "serial/SerialSettings.h"

namespace orx {

class Projector {
  public:
    /// Checksum kind: the sum of all bytes modulo 256 is appended. Any other kind appends nothing.
    static constexpr int additiveChecksum = 1;

    Projector(std::string modelName, ArgumentTable argumentTable, CommandStrings commandStrings,
              int checksumKind);
    /// Copies the model; the copy has no serial connector.
    Projector(const Projector& other);
    Projector& operator=(const Projector&) = delete;
    virtual ~Projector() = default;

    /// Opens the serial line by which commands leave from now on. Throws as `SerialConnector`.
    void connect(std::shared_ptr<SerialSettings> settings);
    /// Sends by way of `connector` from now on.
    void setConnector(std::shared_ptr<SerialConnector> connector);

    /// For each alias "&OTHER" the command of that symbolic name gets the string and, where there
    /// are any, the argument descriptors of the command OTHER. Other values change nothing, but
    /// throw the conversion error "stoi" where they hold a malformed "\x" escape.
    void applyAliases(const MainConfig::Aliases& aliases);

    /// Whether the model has a string, be it empty, for the command of that keyword.
    [[nodiscard]] bool supports(std::string_view keyword) const;

    /// The bytes for `command`, arguments and checksum included; those of an empty string where
    /// the model lacks the command. Throws as `ArgumentInsertion`.
    [[nodiscard]] std::string commandString(const Command& command) const;

    /// Encodes and sends `command`; nothing happens where the model lacks it. Throws as
    /// `commandString`; nothing is sent then.
    void send(const Command& command) const;
    /// Sends the command of that keyword without arguments.
    void sendByName(std::string_view keyword) const;
    /// Sends `bytes` as they are.
    void sendRaw(std::string_view bytes) const;

    /// Changes the delay after each command, in milliseconds, from the next one on.
    void setDelay(int milliseconds) const;

    /// Prints the checksum kind and all commands to standard output.
    void dump() const;

  private:
    CommandStrings commands;
    ArgumentTable arguments;
    std::shared_ptr<SerialConnector> connector;
    std::string name;
    int checksum;
};

}  // namespace orx
