#include "cli/Job.h"

#include "cli/Options.h"
#include "cli/Templates.h"

namespace belvor {

Job jobOf(const Options& options, std::size_t number, const std::string& model)
{
    Job job{number, model, options.type, {}, {}};
    if (job.type == FileType::unknown) job.type = fileTypeOfPacked(model);
    const bool templates = options.batch || options.chosenViews.size() > 1;
    for (const ChosenView& view : options.chosenViews) {
        std::vector<std::string>& names = job.outputs.emplace_back();
        for (const std::string& output : options.outputs)
            names.push_back(templates ? expandedName(output, {model, view.name, number}) : output);
    }
    return job;
}

}   // namespace belvor
