#pragma once

#include "OpenSG/Node.h"

#include <filesystem>
#include <map>
#include <string>

namespace uvtool
{

/// Settings as texts under keys, as they stand on a node. In a file they are a JSON object of
/// texts, its keys ascending.
using SettingsTexts = std::map<std::string, std::string>;

/// Reads a file. A FileError of kind Read where it holds anything but one object of texts.
SettingsTexts readSettingsTexts(const std::filesystem::path& path);

/// What the file of some texts holds.
std::string fileOf(const SettingsTexts& texts);

/// A FileError of kind Read, for the file that the texts were read from, where one that the
/// projection reads as a number, or as true or false, is none. Keys that it doesn't know may hold
/// anything.
///
/// known  texts as the projection writes them, which tell of each key what it is
void throwUnlessReadable(const SettingsTexts& texts, const SettingsTexts& known,
                         const std::filesystem::path& path);

/// Adds texts to those of a node.
void putOnNode(const SettingsTexts& texts, const osg::NodePtr& node);
SettingsTexts textsOf(const osg::NodePtr& node);

} // namespace uvtool
