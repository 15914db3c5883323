// Nothing: the target of this source holds the headers that the tests share.
