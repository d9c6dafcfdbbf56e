#pragma once

#include "controls/sele_part.h"

#include <string>
#include <string_view>
#include <vector>

// The tree of exchanges, commodities and option series of the contract popup.
class CSeleCodeTreeCtrl : public CSelePart<CTreeCtrl> {
public:
    // Appends a node whose item data point to the text `data`. Goes straight to the control's own procedure,
    // since a book has thousands of nodes.
    HTREEITEM AppendNode(const std::string& text, const std::string& data, HTREEITEM parent);
    void Clear();
    // From the node downwards, as long as there is one child only.
    void OpenSingleChildren(HTREEITEM item);
    // All but this one, unless it is closed itself or was the last to be opened.
    void CloseOtherRoots(HTREEITEM item);
    // The data of the node and of those above it, the node first; empty for null.
    std::vector<std::string_view> PathOf(HTREEITEM item) const;

private:
    HTREEITEM m_lastOpened = nullptr;  // of the roots
};
