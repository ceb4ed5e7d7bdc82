// Nothing of its own: what the test programs read of headers is compiled beside it.
