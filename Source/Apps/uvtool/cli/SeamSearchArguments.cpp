#include "cli/SeamSearchArguments.h"

#include "cli/NumberRange.h"

#include <algorithm>
#include <map>
#include <vector>

namespace uvtool
{

void addSeamSearch(CLI::App& command, const char* modeOption, SeamSearchOptions& search)
{
    std::map<std::string, SeamChoice> modes{{"organic", OrganicSeams},
                                            {"manufactured", ManufacturedSeams},
                                            {"baking", BakingSeams},
                                            {"auto", AutoSeams}};
    const bool isForUnfold = std::string(modeOption) == "--seams";
    if (isForUnfold)
        modes["none"] = NoSeams;
    command
        .add_option_function<std::string>(
            modeOption,
            [&search, modes](const std::string& word) { search.choice = modes.at(word); },
            std::string(
                "Seams to find. organic: few and hidden, for bodies; manufactured: along\n"
                "sharp edges, for hard surfaces; baking: along sharp edges, patches of so\n"
                "many polygons; auto: organic or manufactured, by the kind of the surface") +
                (isForUnfold
                     ? "; none:\nthe mesh's own only. auto for a geometry without UVs, else "
                       "none if not given"
                     : ".\nauto if not given"))
        ->check(CLI::IsMember(modes));
    command
        .add_option("--seam-angle", search.angle,
                    "manufactured, baking: where the surface bends by more degrees is a seam")
        ->check(numberFrom(0.0, 180.0));
    command
        .add_option("--seam-amount", search.amount,
                    "organic: how many seams, from 0, the fewest, to 1")
        ->check(numberFrom(0.0, 1.0));
    command.add_flag("--pipes", search.pipes,
                     "organic: open what is like a tube along one line, and cap it off");
    command
        .add_option("--min-patch-area", search.minPatchArea,
                    "manufactured: the smallest patch, as a part of the whole area")
        ->check(numberFrom(0.0, 1.0));
    command
        .add_option("--min-patch-polygons", search.minPatchPolygons,
                    "baking: the smallest patch, in polygons")
        ->check(numberFrom(0));
}

std::string misplacedSeamOption(const SeamSearchOptions& search)
{
    struct Place
    {
        const char* option;
        bool isGiven;
        std::vector<SeamChoice> modes;
        const char* names;
    };
    const Place places[] = {
        {"--seam-angle",
         search.angle.has_value(),
         {ManufacturedSeams, BakingSeams},
         "manufactured and baking"},
        {"--seam-amount", search.amount.has_value(), {OrganicSeams}, "organic"},
        {"--pipes", search.pipes, {OrganicSeams}, "organic"},
        {"--min-patch-area", search.minPatchArea.has_value(), {ManufacturedSeams}, "manufactured"},
        {"--min-patch-polygons", search.minPatchPolygons.has_value(), {BakingSeams}, "baking"}};
    const SeamChoice choice = search.choice.value_or(AutoSeams);
    for (const Place& place : places) {
        const bool fits =
            std::find(place.modes.begin(), place.modes.end(), choice) != place.modes.end();
        const bool mayFit = choice == AutoSeams && place.modes.front() != BakingSeams;
        if (place.isGiven && !fits && !mayFit)
            return std::string(place.option) + " is an option of seams of the mode " + place.names +
                   "; choose that";
    }
    return {};
}

} // namespace uvtool
