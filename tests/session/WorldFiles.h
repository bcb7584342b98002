#pragma once

#include "tests/support/Files.h"
#include "tests/support/Models.h"

#include <string>
#include <vector>

namespace belvor::test {

/// The files that a user of a World opens and writes; in a folder of their own, made once.
class WorldFiles {
    /// Where nothing waits for a disk, if there is such a place.
    static std::filesystem::path fastFolder()
    {
        const std::filesystem::path memory = "/dev/shm";
        return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
    }
    const TempFolder folder{fastFolder()};

public:
    /// Takes every file and fails when it is written.
    static constexpr const char* fullDevice = "/dev/full";

    WorldFiles()
    {
        for (int k = 1; k <= 4; ++k) {   // each of another shape, with a material that names it
            std::string text = boxText;
            text.replace(text.find("2 4 6"), 1, std::to_string(2 + 3 * k));
            text.replace(text.find("Base"), 4, "Model" + std::to_string(k));
            models.push_back(folder.write("box" + std::to_string(k) + ".thf", text));
        }
        folder.write("faces.dxf", drawingText(faceEntity));
        folder.write("bad.thf", "Y \n3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 m\n3 7 2 3\n");
        for (const char* const name : {"faces.dxf", "bad.thf", "missing.thf", "unknown.model"})
            models.push_back(in(name));
        if (std::filesystem::exists(fullDevice)) images.push_back(fullDevice);
    }
    std::string in(const std::string& name) const { return folder.in(name); }

    std::vector<std::string> models;   ///< Good ones, bad ones, one that is missing, one of no known type.
    /// The last ones cannot be written.
    std::vector<std::string> images{in("image1.omb"), in("image2.omb"), in("image3.omb"),
                                    in("no such folder/image.omb")};
    std::vector<std::string> parameters{in("a.bvp"), in("b.bvp"), in("no such folder/c.bvp")};
};

}   // namespace belvor::test
