#pragma once

/// The movies of the suite, 1 and 2. Their files stand in tolv_movie_table.def.
enum TOLV_MOVIE_ENUM : int
{
    TOLV_MOVIE_NONE = 0, ///< no movie
#define TOLV_MOVIE_ROW(enumerator, file) enumerator,
#include "tolv_movie_table.def"
#undef TOLV_MOVIE_ROW
    TOLV_MOVIE_END ///< one behind the last movie
};

/// The number of movies, and the value of the last one.
constexpr int TOLV_MOVIE_COUNT = TOLV_MOVIE_END - 1;
static_assert(TOLV_MOVIE_COUNT == 2, "the table of movies has 2 rows");
static_assert(TOLV_BUSY_SPINNER_MOVIE == 1 && TOLV_IP_RGENWHEEL_MOVIE == 2, "the values of movies are fixed");
