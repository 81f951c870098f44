// Memory for the pages that SQLite keeps.
#pragma once

namespace engine::embedded {

/// From now on, in the whole process, SQLite takes the memory of database pages from large pieces, which the system
/// provides in one go: otherwise providing 60 MiB, a page at a time, takes a fifth of the time in which ten years of
/// data are read. To be called before SQLite is used; afterwards it changes nothing. If the system refuses such
/// pieces, SQLite goes on a page at a time. On Windows it does nothing, because large pieces need a right there that
/// users do not have.
void keep_pages_together() noexcept;

}  // namespace engine::embedded
