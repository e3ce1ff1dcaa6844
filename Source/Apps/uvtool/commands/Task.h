#pragma once

#include "cli/Console.h"
#include "cli/Options.h"
#include "cli/ProgressBar.h"
#include "cli/Stopwatch.h"
#include "document/Document.h"
#include "layout/DocumentLayout.h"
#include "layout/MarkedSides.h"
#include "layout/UVBox.h"
#include "report/Report.h"

#include "Utils/kyStackedProgress.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace uvtool
{

/// The geometries of a document that the options choose: all, or the one of a number. A
/// CommandError of status WrongUsage for one that isn't there.
///
/// option  by which it was given
std::vector<std::size_t> chooseGeometries(const Document& document,
                                          const std::optional<std::size_t>& number,
                                          const char* option);

/// A command under way: what it works on, what it has to tell, and the frame that all commands
/// share.
class Task
{
public:
    /// name  as the user calls the command
    Task(const char* name, const Options& commandOptions, Console& commandConsole);

    const Options& options;
    Console& console;
    Report report;
    Document document;
    std::vector<std::size_t> chosen; ///< geometries that the command is about, ascending; of a
                                     ///< shell its surfaces

    DocumentGeometry& geometry(std::size_t i) { return document.geometries[chosen[i]]; }

    /// Reads the input and chooses the geometries.
    void read();

    /// Does a part of the work and notes how long it took. A user who asked to stop is heard before
    /// it.
    ///
    /// share  of the progress of the whole command; the shares of a command add up to 1
    void stage(const char* name, double share, const std::function<void()>& work);

    /// Within a stage: the library's next operation is this share of it.
    void beginPartOfStage(double share) { progress_.setScale(share * stageShare_); }

    /// Within a stage: this part of it is done.
    void advance(double part) { progress_.incrementBy(part); }

    /// A CommandError of status Interrupted when the user asked to stop.
    void throwIfCancelled() const;

    /// Does the work and tells about it: as JSON where that is wanted, also how far it got when it
    /// ends with an error, which goes on to the caller; and by what `tell` prints.
    void run(const std::function<void()>& work, const std::function<void()>& tell);

    /// Fails where the files that were asked for cannot be written, before any work is done.
    void probeOutputs() const;

    /// Draws the layout, and the mesh with it, where such pictures were asked for; `boxes` as in
    /// PictureOptions, `marked` is pointed out in both.
    void draw(const DocumentLayout& layout, const std::vector<UVBox>& boxes,
              const MarkedSides& marked = {});

private:
    void finish(Outcome outcome, const std::string& error);
    void printJson() const;

    Stopwatch watch_;
    ProgressBar bar_;
    kyStackedProgress progress_;
    double stageShare_ = 0.0;
};

/// Prints what there is to know about the geometries of a command that has changed UVs, and, where
/// the report isn't printed as JSON, what the result is like.
void tellResult(Task& task);

} // namespace uvtool
