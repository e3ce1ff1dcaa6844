#include "projection/SettingsTexts.h"

#include "document/FileError.h"
#include "document/NumberText.h"
#include "document/OutputFile.h"
#include "document/PlaceInText.h"

#include "OpenSGExt/ValuePair.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace uvtool
{
namespace
{

using Json = nlohmann::json; // keys ascending

[[noreturn]] void refuse(const std::filesystem::path& path, const std::string& why)
{
    throw FileError(FileError::Read, path, why);
}

std::string quoted(const std::string& text)
{
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Nothing is nested in an object of texts. Told while reading, so that no depth can harm.
bool refuseNesting(int depth, Json::parse_event_t event, Json&)
{
    const bool begins =
        event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
    if (begins && depth > 0)
        throw std::invalid_argument("nested");
    return true;
}

Json parse(const std::string& bytes, const std::filesystem::path& path)
{
    const std::string form = "settings are a JSON object of texts";
    try {
        Json json = Json::parse(bytes, refuseNesting);
        if (!json.is_object())
            refuse(path, form);
        return json;
    } catch (const Json::parse_error& error) {
        refuse(path, "not valid JSON at " + placeOfByte(bytes, error.byte) + "; " + form);
    } catch (const Json::exception&) {
        refuse(path, "JSON with a number that is too large; " + form);
    } catch (const std::invalid_argument&) {
        refuse(path, "JSON within JSON; " + form);
    }
}

bool isTruth(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text == "true" || text == "false";
}

bool isNumber(const std::string& text)
{
    double number = 0;
    return readNumber(text, number);
}

} // namespace

SettingsTexts readSettingsTexts(const std::filesystem::path& path)
{
    SettingsTexts texts;
    const Json json = parse(readWholeFile(path), path);
    for (const auto& [key, value] : json.items()) {
        if (!value.is_string())
            refuse(path, quoted(key) + " is no text; put numbers in quotes as well");
        texts.emplace(key, value.get<std::string>());
    }
    return texts;
}

std::string fileOf(const SettingsTexts& texts)
{
    return Json(texts).dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

void throwUnlessReadable(const SettingsTexts& texts, const SettingsTexts& known,
                         const std::filesystem::path& path)
{
    for (const auto& [key, example] : known) {
        const auto found = texts.find(key);
        if (found == texts.end() || isNumber(found->second))
            continue;
        if (!isTruth(example))
            refuse(path, quoted(key) + " holds " + quoted(found->second) + ", which is no number");
        if (!isTruth(found->second))
            refuse(path, quoted(key) + " holds " + quoted(found->second) +
                             "; it has to be true or false");
    }
}

void putOnNode(const SettingsTexts& texts, const osg::NodePtr& node)
{
    osg::ValuePairPtr pair = osg::ValuePair::find(node);
    if (!pair) {
        pair = osg::ValuePair::create();
        node->addAttachment(pair);
    }
    for (const auto& [key, text] : texts)
        pair->set(key, text);
}

SettingsTexts textsOf(const osg::NodePtr& node)
{
    const osg::ValuePairPtr pair = osg::ValuePair::find(node);
    return pair ? pair->entries() : SettingsTexts();
}

} // namespace uvtool
