// The colour model's part of the request and the reply: the Data items of type attrnames and
// colourschemelist, and the ColourSchemeList item of the reply.
#pragma once

#include "colours/colourscheme.h"
#include "colours/colourtexts.h"

namespace AdvXMLParser {
class Element;
}

namespace qrl {

// Reads the feature, colour and field names under a Data item of type attrnames into the four
// tables; entries with an index of 16 or more are ignored.
void ReadAttrNames(TNameTable& shortFeatureNames, TNameTable& longFeatureNames, TNameTable& colourDescriptions,
                   TNameTable& fieldDescriptions, const AdvXMLParser::Element& item);
// The same into anything that holds the four tables under their usual names (the session,
// TAttrNameTables).
template <class Tables>
void ReadAttrNames(Tables& tables, const AdvXMLParser::Element& item) {
    ReadAttrNames(tables.shortFeatureNames, tables.longFeatureNames, tables.colourDescriptions,
                  tables.fieldDescriptions, item);
}

// Appends one scheme for each child element of a Data item of type colourschemelist.
void ReadColourSchemes(TColourSchemeList& schemes, const AdvXMLParser::Element& item);

// Writes one scheme's palette, colour map, features, fields and settings under `node`.
void WriteColourScheme(AdvXMLParser::Element& node, const TColourScheme& scheme);

// The reply's Item "ColourSchemeList" under `data`: one ColourScheme for each scheme that is to be
// updated or deleted, in list order. The caller writes it only when the request carried colour data.
void WriteColourSchemeListItem(AdvXMLParser::Element& data, const TColourSchemeList& schemes);

}  // namespace qrl
