#include "host/internal/ContactMessage.h"

#include "platform/ClientUtils.h"
#include "platform/Logging.h"

#include <algorithm>
#include <iterator>
#include <pugixml.hpp>
#include <sstream>

namespace Host
{
namespace
{
constexpr const char* CONTACT_MESSAGE_LOG_FILE = "./host/ContactMessage";

constexpr const char* SCHEMA = "Schema";
constexpr const char* SCHEMA_NAME = "PhoneBook";
constexpr const char* ENTRY = "Entry";
constexpr const char* REASON = "ReasonForMessage";
constexpr const char* ID = "UniqueID";

/** Room for every picture's name and a dozen texts of a megabyte each; parsed, a message takes several times that. */
constexpr std::size_t LONGEST_MESSAGE = 16U << 20U;

/** White space and ends of lines are left as they are, and so are escapes: see unescaped(). */
constexpr unsigned PARSING = pugi::parse_cdata | pugi::parse_ws_pcdata_single;

void logRefusal(const std::string& xml, const char* why)
{
    const std::string format = std::string("A message of %zu bytes to the phonebook is refused: ") + why;
    logAppOrv("Host", CONTACT_MESSAGE_LOG_FILE, 2, __LINE__, format.c_str(), xml.size());
}

/** By the rules of those who read the phonebook's messages: an escape that stands for no character, as that of NUL,
 *  stays as it is; here it would end the text. */
std::string unescaped(const pugi::xml_node& node)
{
    return node.type() == pugi::node_pcdata ? ClientUtils::unescapeXMLString(node.value()) : node.value();
}

/** Gathers the texts of an element, also those of elements in it. */
struct TextGatherer : pugi::xml_tree_walker
{
    bool for_each(pugi::xml_node& node) override
    {
        text += unescaped(node);
        hasElements = hasElements || node.type() == pugi::node_element;
        return true;
    }

    std::string text;
    bool hasElements = false;
};

/** Who did not escape a text wrote elements into it. */
std::string textOf(pugi::xml_node element)
{
    TextGatherer gatherer;
    element.traverse(gatherer);
    if (gatherer.hasElements)
    {
        logAppOrv("Host", CONTACT_MESSAGE_LOG_FILE, 3, __LINE__,
                  "A contact's %s has elements inside, of which the text is kept", element.name());
    }
    return gatherer.text;
}

/** Of elements that are there twice the first one counts, as it does for those who look for a name in the text. */
ContactMessage readEntry(pugi::xml_node entry)
{
    ContactMessage message;
    std::ptrdiff_t used = 0;
    const auto read = [&](const char* name)
    {
        const pugi::xml_node element = entry.child(name);
        used += element ? 1 : 0;
        return element ? std::make_optional(textOf(element)) : std::nullopt;
    };
    message.id = read(ID).value_or("");
    std::transform(CONTACT_FIELDS.begin(), CONTACT_FIELDS.end(), message.values.begin(),
                   [&read](const ContactField& field) { return read(field.element); });
    const std::ptrdiff_t surplus = std::distance(entry.begin(), entry.end()) - used;
    if (surplus != 0)
    {
        logAppOrv("Host", CONTACT_MESSAGE_LOG_FILE, 3, __LINE__,
                  "%td elements of a contact are passed over: not known, or there twice", surplus);
    }
    return message;
}

/** Why the message cannot be used; null when it can. */
const char* faultOf(pugi::xml_node schema, const std::string& reason)
{
    const pugi::xml_node told = schema.child(REASON);
    if (schema.attribute("name").value() != std::string(SCHEMA_NAME) || !schema.child(ENTRY))
    {
        return "it has no entry of a PhoneBook";
    }
    return told && textOf(told) != reason ? "it was sent for another reason" : nullptr;
}
} // namespace

void complete(ContactValues& values, const ContactValues& older)
{
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        values[i] = values[i] ? values[i] : older[i];
    }
}

bool namesSomebody(const ContactValues& values)
{
    for (std::size_t i = 0; i < values.size(); ++i)
    {
        if (CONTACT_FIELDS[i].isPersonal && !values[i].value_or("").empty())
        {
            return true;
        }
    }
    return false;
}

std::optional<ContactMessage> parseContactMessage(const std::string& xml, const std::string& reason)
{
    if (xml.size() > LONGEST_MESSAGE)
    {
        logRefusal(xml, "it is too long");
        return std::nullopt;
    }
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(xml.data(), xml.size(), PARSING, pugi::encoding_utf8);
    const pugi::xml_node schema = document.child(SCHEMA);
    const char* fault = result ? faultOf(schema, reason) : result.description();
    if (fault)
    {
        logRefusal(xml, fault);
        return std::nullopt;
    }
    const pugi::xml_node entry = schema.child(ENTRY);
    if (entry.next_sibling(ENTRY))
    {
        logAppOrv("Host", CONTACT_MESSAGE_LOG_FILE, 2, __LINE__,
                  "Of a message with several contacts only the first one is taken");
    }
    return readEntry(entry);
}

std::string formatContactMessage(const ContactMessage& message)
{
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version").set_value("1.0");
    declaration.append_attribute("encoding").set_value("utf-8");
    pugi::xml_node schema = document.append_child(SCHEMA);
    schema.append_attribute("name").set_value(SCHEMA_NAME);
    pugi::xml_node entry = schema.append_child(ENTRY);
    for (std::size_t i = 0; i < CONTACT_FIELDS.size(); ++i)
    {
        const std::string value = message.values[i].value_or(CONTACT_FIELDS[i].untold);
        entry.append_child(CONTACT_FIELDS[i].element).text().set(value.c_str());
    }
    entry.append_child(ID).text().set(message.id.c_str());
    std::ostringstream xml;
    document.save(xml, "", pugi::format_raw | pugi::format_no_empty_element_tags, pugi::encoding_utf8);
    return xml.str();
}
} // namespace Host
