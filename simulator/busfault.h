#pragma once

// Ways in which a servo's reply can go wrong on the wire, injected for tests.
enum class BusFault {
    Drop,     // no reply at all
    Corrupt,  // one byte changed
    Truncate, // the reply stops short
    Garbage,  // noise before the reply
    Late,     // the reply comes after any sensible timeout
    Twice,    // the reply is sent again
};

constexpr int BusFaultCount = 6;
