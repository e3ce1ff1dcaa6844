#pragma once

#include "Unfold3D/contract/CRef.h"
#include "Unfold3D/mesh/TopologyLines.h"

#include <string>

namespace unfold3d
{

/// The result table of a command while the command fills it.
class Answer
{
public:
    Answer();

    /// An output of the command under its key.
    void set(const std::string& key, NU3D::CRef value);

    /// Something that the user should know although the command goes on. Several warnings stand
    /// under "Warning" as lines of one text.
    void warn(const std::string& text);
    void fail(const std::string& text);

    /// Lines under `key`, one of "Warning.Topo3D", "Warning.TopoUV", "Error.Topo3D" and
    /// "Error.TopoUV"; no lines make no entry.
    void setTopology(const std::string& key, const TopologyLines& lines);

    /// The finished table.
    NU3D::CRef table() const { return table_; }

private:
    void appendText(const char* key, const std::string& text);

    NU3D::CRef table_;
};

} // namespace unfold3d
