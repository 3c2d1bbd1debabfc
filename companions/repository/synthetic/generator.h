#pragma once

#include "repository/store/store.h"

namespace repository::synthetic {

/// The size of a synthetic model.
struct Size {
    long metaNodes = 0;
    /// Of each meta node.
    long nodes = 0;
    /// Of each node, to nodes of the next meta node.
    long links = 0;
    /// Of each meta node; every node has a value for each.
    long properties = 0;
};

/// Adds a synthetic model as one change, always the same for the same size. With M, N, L and P for
/// numbers that count from 1: the meta node "Type M" has the properties "Property P", of the data
/// types in turn, and the nodes with the identifiers "nM.N" and the names "Node M.N"; the meta link
/// "Type M to Type M+1" (the last leads to "Type 1") has the links "lM.N.L". Errors: 5 for a
/// negative number, 457 where such a model is there already.
void Generate(store::Store& store, const Size& size);

}  // namespace repository::synthetic
