// Pages about networks made by hand, and about the samples.
#ifndef TESTS_TOOLS_REPORT_REPORT_FOR_TESTS_H
#define TESTS_TOOLS_REPORT_REPORT_FOR_TESTS_H

#include <cstddef>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"

#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"
#include "tools/halvane/survey/network.h"

namespace halvane::testing {

// Names that try to break out of a page, or to deceive its readers.
inline const std::vector<std::string_view>& hostileNames() {
    using namespace std::string_view_literals;
    static const std::vector<std::string_view> names = {
        "</title></style></script><b>x"sv,
        "<script>alert(1)</script>"sv,
        "\"><img src=x onerror=alert(1)>"sv,
        "' onmouseover='alert(1)"sv,
        "]]>&lt;b&gt;&amp;"sv,
        "<!-- "sv,
        "javascript:alert(1)"sv,
        "\u202Eevil\u202C gnp.exe"sv,
        "\u200B\u200B"sv,
        "\x1B[31mred\x07"sv,
        "a\nb\r\tc"sv,
        "\xFF\xFE\0\x80"sv,
        "(hidden)"sv,
        " leading"sv,
        "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW"sv,
        "\u05D1\u05D9\u05EA \u05E7\u05E4\u05D4"sv,
        "Z\u0351\u036B\u0343\u036A\u0302a\u0336l\u0337go"sv,
        "\\x41\\"sv,
        "${alert(1)}`{{7*7}}"sv,
        "\uFFFE\uFDD0"sv,
    };
    return names;
}

// Networks, and a page's data of them.
class ReportMaker {
  public:
    tool::Network& add(const MadeNetwork& made) {
        networks_.push_back(maker_.make(made));
        return networks_.back();
    }

    // A network whose channel is known whole.
    tool::Network& add(const MadeNetwork& made, int center, int width) {
        tool::Network& network = add(made);
        network.profile.channel.span.value = {.width = width, .center1 = center};
        network.profile.channel.primaryFrequency = air::centerFrequencyOf(made.band, made.channel);
        return network;
    }

    tool::ReportData data(tool::ReportOptions options = {}, tool::ReportLimits limits = {}) const {
        return tool::reportData(
            {.networks = networks_, .files = files, .captures = captures, .all = networks_.size()},
            std::move(options), limits);
    }

    std::vector<std::string> files{};
    std::vector<tool::SurveyedCapture> captures{};

  private:
    NetworkMaker maker_;
    std::vector<tool::Network> networks_;
};

// Own networks by their names.
inline tool::ReportOptions ownNamed(std::string name) {
    tool::ReportOptions options;
    options.own = {name};
    options.isOwn = [name = std::move(name)](const tool::Network& network) {
        return tool::nameOf(network) == name;
    };
    return options;
}

using PartWriter = void (*)(tool::HtmlWriter& html, const tool::ReportData& data);

inline std::string written(PartWriter write, const tool::ReportData& data) {
    tool::HtmlWriter html;
    write(html, data);
    return html.take();
}

// The text of an element without its markup.
inline std::string textOf(const pugi::xml_node& node) {
    std::string text;
    for (const pugi::xml_node& child : node.children()) {
        text += child.type() == pugi::node_element ? textOf(child) : child.value();
    }
    return text;
}

// All elements that an XPath describes.
inline std::vector<pugi::xml_node> selected(const pugi::xml_node& root, const char* path) {
    std::vector<pugi::xml_node> nodes;
    for (const pugi::xpath_node& node : root.select_nodes(path)) nodes.push_back(node.node());
    return nodes;
}

// A part of the page as XML, which demands that it is well-formed.
class ParsedPart {
  public:
    explicit ParsedPart(const std::string& html) {
        isWellFormed_ = document_.load_string(("<part>" + html + "</part>").c_str(),
                                              pugi::parse_default | pugi::parse_ws_pcdata);
    }

    bool isWellFormed() const { return isWellFormed_; }
    pugi::xml_node root() const { return document_.first_child(); }
    std::vector<pugi::xml_node> all(const char* path) const { return selected(root(), path); }
    std::string text(const char* path) const { return textOf(root().select_node(path).node()); }

  private:
    pugi::xml_document document_;
    bool isWellFormed_ = false;
};

}  // namespace halvane::testing

#endif
