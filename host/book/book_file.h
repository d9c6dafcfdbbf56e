#pragma once

#include "book/book.h"

#include <memory>
#include <string>

// The book file (docs/host.md describes it). Reading throws BookFileError; nothing of a refused book remains.
std::unique_ptr<Book> ReadBookFile(const std::string& path);
// `file` is only what errors call the text.
std::unique_ptr<Book> ReadBookText(const std::string& text, const std::string& file);

std::string BookText(const Book& book);
// Writes beside the file and puts the result in its place in one step, so that a reader finds the old book or
// the new one, whole. Throws BookFileError; the old file is then untouched.
void WriteBookFile(const Book& book, const std::string& path);
