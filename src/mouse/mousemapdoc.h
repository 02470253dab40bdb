// The mouse map's part of the request and the reply: the Data item of type mousemap and the
// reply's MouseMap item.
#pragma once

#include "mouse/mousemap.h"

namespace AdvXMLParser {
class Element;
}

namespace qrl {

// Replaces map by the Map children of a Data item of type mousemap.
void ReadMouseMap(TMouseMap& map, const AdvXMLParser::Element& item);
// The reply's Item "MouseMap" under `data`, with one Map for each entry that has an action. The
// caller writes it only when the request carried a mouse map.
void WriteMouseMapItem(AdvXMLParser::Element& data, const TMouseMap& map);

}  // namespace qrl
