#pragma once

#include <string>
#include <vector>

namespace unfold3d
{

/// Findings of one kind about the topology, one line each. Only the first are kept in words, the
/// rest are counted, so that a broken mesh of a million triangles gives a page and not a book.
class TopologyLines
{
public:
    static constexpr int maxLines = 20;

    void add(std::string line);
    /// Adds another list; its uncounted rest is counted here too.
    void append(const TopologyLines& other);
    bool empty() const { return count_ == 0; }
    int count() const { return count_; }
    /// The kept lines, and a last one "... and 1234 more" where there were more.
    std::vector<std::string> lines() const;

private:
    std::vector<std::string> kept_;
    int count_ = 0;
};

} // namespace unfold3d
