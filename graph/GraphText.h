#pragma once
// The text form of a graph: one description per element, in the order the
// elements were added, then one link per linked output pad:
//
//   videotestsrc name=src pattern=ball tee name=t queue name=q fakesink name=out
//   src.src ! t.sink t.src_0 ! q.sink q.src ! out.sink
//
// A description is the factory name, name="..." and every property whose
// value differs from a fresh element of that factory, as gst_value_serialize
// writes it (caps filters are capsfilter elements with their caps). The text
// is what gst_parse_launch reads, so a graph can also be rebuilt by hand.

#include <gst/gst.h>

#include <cstddef>
#include <string>

#include "graph/GraphTypes.h"

// Words (runs of letters, digits and "_", and each "(") that a graph's text
// may hold: a few thousand elements with their properties and links. Each
// word can be an element, and building elements costs time with the square
// of their count.
inline constexpr size_t kMaxGraphWords = 8192;
// Brackets nested deeper than this are no graph of ours (caps types such as
// "(int)" stand one deep); building nested bins costs time with the cube of
// their depth.
inline constexpr size_t kMaxGraphDepth = 16;

// Writes the bin's elements, properties and links to *text. False when an
// element can't be written: it has no factory, it is a plain bin holding
// elements, or it is linked while its name can't be referred to in a link
// (names of letters, digits and "_-:%").
bool WriteGraphText(GstBin* graph, std::string* text);

// Builds what `text` describes and moves it into `graph`: S_OK, or E_FAIL
// with the graph as it was when the text doesn't parse, names a factory that
// isn't installed, can't be linked, uses a name the graph already holds, or
// goes beyond kMaxGraphWords words or kMaxGraphDepth nested brackets.
HRESULT LoadGraphText(GstBin* graph, const std::string& text);
