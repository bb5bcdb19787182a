#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "json/JsonNode.h"
#include "support/LogCapture.h"
#include "support/NodeBuild.h"

using tavrin::plugin::json::Node;
using tavrin::test::MakeArray;
using tavrin::test::Real;

// Generated documents of every kind are covered by ParserRoundTripTest; the
// texts chosen for values that have no text of their own are checked here.
TEST(NodeRoundTrip, InfinitiesReadBackAsInfinities) {
    tavrin::test::LogCapture log;
    const double inf = std::numeric_limits<double>::infinity();
    Node array = MakeArray({Real(inf), Real(-inf), Real(-0.0), Real(5e-324)});
    const std::string text = array.Serialize();
    EXPECT_EQ(text, "[1e999,-1e999,-0.0,5e-324]");
    Node back;
    ASSERT_TRUE(back.Deserialize(text.c_str()));
    EXPECT_EQ(back[0].As<double>(), inf);
    EXPECT_EQ(back[1].As<double>(), -inf);
    EXPECT_TRUE(std::signbit(back[2].As<double>()));
    EXPECT_EQ(back.Serialize(), text);
    EXPECT_EQ(log.Text(), "");
}
