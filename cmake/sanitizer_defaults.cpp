// Linked into every program of a sanitizer build.
//
// The XML library keeps a few small objects of every grammar loaded from a
// file (about 230 bytes a load) and never frees them, even after the reader
// and the library are shut down. Grammars are pooled, so this happens once per
// grammar file in a process and no longer grows, but it is still reported.
// The leak is the library's own; every other leak still fails the run.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:xercesc_3_2::IGXMLScanner::loadGrammar\n"
           "leak:xercesc_3_2::IGXMLScanner::scanDocTypeDecl\n"
           "leak:xercesc_3_2::XMLScanner::scanProlog\n";
}

// Tools' tests compare standard error exactly; the list of suppressions used
// would stand in it.
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
