#pragma once

#include "readers/common/Reading.h"
#include "resources/Texts.h"

#include <span>
#include <string>
#include <string_view>

namespace belvor {

class Reporter;

/// The kinds of model files. The numbers are those of a model-load request.
enum class FileType { unknown = 0, man = 1, dxf = 2, things = 3 };

/// One format of model files: all that the dialogs, the tools and the readers need to know of it.
struct ModelFormat {
    FileType type;
    const char* name;        ///< "dxf", for command lines and reports.
    const char* extension;   ///< In lower case, without the dot.
    Text filter;             ///< Its line in the Open Model dialog.
    Text firstStage;         ///< What the status bar says of a reading.
    int stageCount;          ///< 0: the stages are objects, counted as they come.
    bool drawsInPart;        ///< Files hold things that are not drawn, which the account tells.
    /// `name` is for messages and the log.
    Handle<Model> (*read)(std::string_view bytes, const std::string& name, Reporter&, const ReadingOptions&,
                          Account&);
};

/// All formats, in the order of the Open Model dialog.
std::span<const ModelFormat> modelFormats() noexcept;

/// The format of that type, or null for unknown.
const ModelFormat* formatOf(FileType type) noexcept;

/// The kind by the three letters behind the last dot of the path's last part, in any case.
FileType fileTypeOf(std::string_view path) noexcept;

/// "man", "dxf" or "things"; empty for unknown.
const char* nameOf(FileType type) noexcept;

/// The same for a path that may end in .gz behind the ending.
FileType fileTypeOfPacked(std::string_view path) noexcept;

/// Reads the whole file (`path` is UTF-8), unpacked first where its name ends in .gz; no model for an unknown
/// type. What was met stands in `account`, after a failure as far as the reading came. Throws Win32Error,
/// FileError (a pipe, a device, an empty drawing), FileChanged when another program changes the file
/// meanwhile, BadFile, Reporter::Abandoned, std::bad_alloc.
Handle<Model> readModel(const std::string& path, FileType type, Reporter& reporter,
                        const ReadingOptions& options, Account& account);

/// The same from bytes in memory, unpacked first where they begin as a gzip file does; `name` says in
/// messages where they come from.
Handle<Model> readModel(std::string_view bytes, const std::string& name, FileType type, Reporter& reporter,
                        const ReadingOptions& options, Account& account);

/// The same of a file, with the account in the result.
Reading readModel(const std::string& path, FileType type, Reporter& reporter,
                  const ReadingOptions& options = {});

/// Warns in `account` when the model is so large that normals and positions of it leave the range of a
/// number.
void checkBounds(const Point<3>& centre, double radius, Account& account);

}   // namespace belvor
