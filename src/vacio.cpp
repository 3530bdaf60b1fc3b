// Keeps a layer whose sources are still to come linkable.
