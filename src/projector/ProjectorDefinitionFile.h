// The binary file with the command sets of all projector models.
//
// The header and both lists are read when the file is opened, a model's block when the model is
// first asked for. Counts and lengths in the file are trusted; bytes that are not there read as
// zero. What is handed out are copies, so the dump always shows the file's own values. Used by the
// main thread while the daemon starts.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "core/InputFile.h"
#include "projector/LittleEndianView.h"
#include "projector/Projector.h"
#include "serial/SerialSettings.h"

namespace orx {

class ProjectorDefinitionFile {
  public:
    /// Opens and validates `path`. Throws `std::runtime_error` for a file that is missing, has a
    /// header cut short without the magic, the wrong byte order or another revision than 13.
    explicit ProjectorDefinitionFile(const std::string& path);

    /// A copy of the model of exactly that name, without a serial connector; empty where there is
    /// none.
    [[nodiscard]] std::shared_ptr<Projector> projector(const std::string& name);

    /// A copy of the model's line parameters; empty where there is no such model.
    [[nodiscard]] std::shared_ptr<SerialSettings> serialSettings(const std::string& name);

    /// Prints the whole file to standard output and loads every model on the way.
    void dump();

  private:
    /// Where a model's block lies in the file.
    struct BlockPlace {
        int offset;
        int length;
    };

    /// A loaded block.
    struct Model {
        SerialSettings settings;
        Projector projector;
    };

    void readHeader();
    void readCommandList();
    void readProjectorList();
    [[nodiscard]] const Model* load(const std::string& name);
    [[nodiscard]] Model parseBlock(const std::string& name, const LittleEndianView& block);
    [[nodiscard]] const std::string& commandName(int id);
    void dumpHeader() const;
    void dumpCommandList() const;

    InputFile file;
    std::string header;  ///< the header's bytes
    std::map<int, std::string> commandList;
    std::map<std::string, BlockPlace> projectorList;
    std::map<std::string, Model> models;  ///< those loaded so far
};

}  // namespace orx
