#pragma once

#include <string_view>

namespace repository::ecore {

/// The namespaces that metamodels and models are written with.
namespace uri {
constexpr std::string_view ecore = "http://www.eclipse.org/emf/2002/Ecore";
constexpr std::string_view xmlType = "http://www.eclipse.org/emf/2003/XMLType";
constexpr std::string_view xmi = "http://www.omg.org/XMI";
constexpr std::string_view xsi = "http://www.w3.org/2001/XMLSchema-instance";
/// The sources of the annotations that name features in XML and that document them.
constexpr std::string_view extendedMetaData = "http:///org/eclipse/emf/ecore/util/ExtendedMetaData";
constexpr std::string_view genModel = "http://www.eclipse.org/emf/2002/GenModel";
/// What models of ours say that XMI cannot: names and descriptions of objects whose classes have no
/// such attribute.
constexpr std::string_view own = "urn:orvane:repository";
}  // namespace uri

/// Whether a namespace is that of XMI, in any of its versions.
inline bool IsXmi(std::string_view text) {
    return text == uri::xmi || text.starts_with("http://schema.omg.org/spec/XMI") ||
           text.starts_with("http://www.omg.org/spec/XMI");
}

}  // namespace repository::ecore
