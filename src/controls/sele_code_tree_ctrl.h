#pragma once

#include "controls/sele_part.h"

#include <string>

// The tree of exchanges, commodities and option series of the contract popup.
class CSeleCodeTreeCtrl : public CSelePart<CTreeCtrl> {
public:
    // Appends a node whose item data point to the text `data`. Goes straight to the control's own procedure,
    // since a book has thousands of nodes.
    HTREEITEM AppendNode(const std::string& text, const std::string& data, HTREEITEM parent);
};
