#include "schematic_graph_p.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>
#include <set>
#include <tuple>

namespace
{
using namespace SCHEMATIC_MEASURES;

const int BOX_CLEARANCE = 8;   ///< between a line that passes a box above or below and the box
const int STRAIGHT_RANGE = 36; ///< a line goes straight on where it would pass a column within this range of that
const int DRAWING_MARGIN = 24; ///< around all

/// The channels between the columns of boxes hold the vertical lines; channel i lies to the left of column i, and one
/// more behind the last column. Horizontal lines run from a pin to a vertical line or between two of them, through a
/// column above or below its boxes.
class ROUTER
{
public:
    ROUTER(const SCHEMATIC_GRAPH& graph, const SCHEMATIC_PLACES& places, const std::vector<std::uint32_t>& columns,
           SCHEMATIC& schematic)
        : m_graph(graph), m_places(places), m_column_of_box(columns), m_schematic(schematic)
    {
        for (const std::uint32_t column : columns)
            m_columns.resize(std::max<std::size_t>(m_columns.size(), column + 1));
        m_track_counts.resize(m_columns.size() + 1);
    }

    void run()
    {
        for (std::uint32_t i = 0; i < m_schematic.boxes.size(); ++i)
            add_box(i);
        for (std::uint32_t i = 0; i < m_graph.edges.size(); ++i)
            route_edge(i);
        assign_tracks();
        place_columns();
        draw_lines();
        draw_junctions();
        finish_bounds();
    }

private:
    struct COLUMN
    {
        std::vector<std::pair<int, int>> blocked;         ///< from the top of a box to its bottom
        std::vector<std::pair<int, std::uint32_t>> lines; ///< that pass: y and net
        std::vector<std::uint32_t> boxes;
        double middle = 0; ///< where Graphviz has it
        int x = 0;
        int width = 0;
    };

    enum SIDE
    {
        SIDE_LEFT,
        SIDE_RIGHT
    };

    /// The vertical line of a net in a channel.
    struct VERTICAL
    {
        int top = INT_MAX;
        int bottom = INT_MIN;
        int track = 0;
        std::set<std::pair<int, SIDE>> joints; ///< where horizontal lines meet it, and from which side
    };

    using CHANNEL_NET = std::pair<std::uint32_t, std::uint32_t>;

    const SCHEMATIC::BOX& get_box(SCHEMATIC_GRAPH::PIN_NUMBER pin) const
    {
        return m_schematic.boxes[pin.box];
    }

    int get_pin_y(SCHEMATIC_GRAPH::PIN_NUMBER pin) const
    {
        return get_box(pin).rect.y() + get_box(pin).pins[pin.pin].position.y();
    }

    void add_box(std::uint32_t index)
    {
        COLUMN& column = m_columns[m_column_of_box[index]];
        const QRect& rect = m_schematic.boxes[index].rect;
        column.blocked.emplace_back(rect.top() - BOX_CLEARANCE, rect.bottom() + BOX_CLEARANCE);
        column.boxes.push_back(index);
        column.middle = m_places.boxes[index].x();
        column.width =
            std::max(column.width, rect.width() + m_graph.left_margins[index] + m_graph.right_margins[index]);
    }

    /// Finds a line through a column, as near to `y` as there is room, and takes it for the net.
    int claim_line(std::uint32_t column_number, int y, std::uint32_t net)
    {
        COLUMN& column = m_columns[column_number];
        // All lines of a net through a column are one.
        const auto own_line =
            std::find_if(column.lines.begin(), column.lines.end(),
                         [&](const std::pair<int, std::uint32_t>& line) { return line.second == net; });
        if (own_line != column.lines.end())
            return own_line->first;
        const auto is_free = [&](int candidate)
        {
            return std::none_of(column.blocked.begin(), column.blocked.end(),
                                [&](const std::pair<int, int>& block)
                                { return candidate > block.first && candidate < block.second; }) &&
                   std::none_of(column.lines.begin(), column.lines.end(),
                                [&](const std::pair<int, std::uint32_t>& line)
                                { return std::abs(line.first - candidate) < TRACK_PITCH; });
        };
        int step = 0;
        while (!is_free(y + step) && !is_free(y - step))
            ++step;
        const int line = is_free(y + step) ? y + step : y - step;
        column.lines.emplace_back(line, net);
        return line;
    }

    /// Where an edge passes a column, as Graphviz draws it.
    int get_passing_y(std::uint32_t edge, std::uint32_t column, int otherwise) const
    {
        const std::vector<QPointF>& points = m_places.edges[edge];
        const double x = m_columns[column].middle;
        for (std::size_t i = 1; i < points.size(); ++i)
        {
            const QPointF& a = points[i - 1];
            const QPointF& b = points[i];
            if (std::min(a.x(), b.x()) > x || std::max(a.x(), b.x()) < x)
                continue;
            const double part = a.x() == b.x() ? 0 : (x - a.x()) / (b.x() - a.x());
            return int(std::lround(a.y() + part * (b.y() - a.y())));
        }
        return otherwise;
    }

    void join(std::uint32_t channel, std::uint32_t net, int y, SIDE side)
    {
        VERTICAL& vertical = m_verticals[{channel, net}];
        vertical.top = std::min(vertical.top, y);
        vertical.bottom = std::max(vertical.bottom, y);
        vertical.joints.insert({y, side});
    }

    void pass(std::uint32_t column, std::uint32_t net, int y)
    {
        m_passings.insert({net, column, y});
    }

    void route_edge(std::uint32_t number)
    {
        const SCHEMATIC_GRAPH::EDGE& edge = m_graph.edges[number];
        const std::uint32_t first = m_column_of_box[edge.from.box];
        const std::uint32_t last = m_column_of_box[edge.to.box];
        int y = get_pin_y(edge.from);
        join(first + 1, edge.net, y, SIDE_LEFT);
        if (first < last)
        {
            for (std::uint32_t column = first + 1; column < last; ++column)
            {
                const int passing_y = get_passing_y(number, column, y);
                y = claim_line(column, std::abs(passing_y - y) <= STRAIGHT_RANGE ? y : passing_y, edge.net);
                join(column, edge.net, y, SIDE_RIGHT);
                pass(column, edge.net, y);
                join(column + 1, edge.net, y, SIDE_LEFT);
            }
        }
        else
            route_back(number, first, last);
        join(last, edge.net, get_pin_y(edge.to), SIDE_RIGHT);
    }

    /// From the channel behind the driver's column to the one before the sink's, below both boxes.
    void route_back(std::uint32_t number, std::uint32_t first, std::uint32_t last)
    {
        const SCHEMATIC_GRAPH::EDGE& edge = m_graph.edges[number];
        for (std::uint32_t column = first + 1; column-- > last;)
        {
            const int below_driver = get_box(edge.from).rect.bottom() + 2 * BOX_CLEARANCE;
            const int below_sink = get_box(edge.to).rect.bottom() + 2 * BOX_CLEARANCE;
            const int wanted = column == first  ? below_driver
                               : column == last ? below_sink
                                                : get_passing_y(number, column, below_driver);
            const int y = claim_line(column, wanted, edge.net);
            join(column + 1, edge.net, y, SIDE_LEFT);
            pass(column, edge.net, y);
            join(column, edge.net, y, SIDE_RIGHT);
        }
    }

    /// The vertical lines of a channel from the top, each on the first track that is free there.
    void assign_tracks()
    {
        std::vector<std::vector<VERTICAL*>> channels(m_track_counts.size());
        for (auto& [key, vertical] : m_verticals)
        {
            if (vertical.top < vertical.bottom)
                channels[key.first].push_back(&vertical);
        }
        for (std::size_t channel = 0; channel < channels.size(); ++channel)
        {
            std::vector<VERTICAL*>& verticals = channels[channel];
            std::stable_sort(verticals.begin(), verticals.end(),
                             [](const VERTICAL* a, const VERTICAL* b) { return a->top < b->top; });
            std::vector<int> ends;
            for (VERTICAL* vertical : verticals)
            {
                std::size_t track = 0;
                while (track < ends.size() && ends[track] + TRACK_PITCH > vertical->top)
                    ++track;
                ends.resize(std::max(ends.size(), track + 1));
                ends[track] = vertical->bottom;
                vertical->track = int(track);
            }
            m_track_counts[channel] = int(ends.size());
        }
    }

    void place_columns()
    {
        int x = 0;
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            m_channel_x.push_back(x);
            x += 2 * CHANNEL_MARGIN + m_track_counts[i] * TRACK_PITCH;
            m_columns[i].x = x;
            x += m_columns[i].width;
        }
        m_channel_x.push_back(x);
        for (const COLUMN& column : m_columns)
        {
            for (const std::uint32_t box : column.boxes)
                place_box(column, box);
        }
    }

    /// Ports stand at the side of their column where their line leaves, all else in the middle.
    void place_box(const COLUMN& column, std::uint32_t index)
    {
        SCHEMATIC::BOX& box = m_schematic.boxes[index];
        const int left = column.x + m_graph.left_margins[index];
        const int room = column.width - box.rect.width() - m_graph.left_margins[index] - m_graph.right_margins[index];
        const int offset = box.kind == SCHEMATIC::KIND::INPUT_PORT ? room : box.is_port() ? 0 : room / 2;
        box.rect.moveLeft(left + offset);
        for (SCHEMATIC::PIN& pin : box.pins)
            pin.position = QPoint(pin.is_left ? box.rect.left() : box.rect.right(), box.rect.y() + pin.position.y());
    }

    int get_track_x(std::uint32_t channel, std::uint32_t net) const
    {
        return m_channel_x[channel] + CHANNEL_MARGIN + m_verticals.at({channel, net}).track * TRACK_PITCH;
    }

    void add_line(int x1, int y1, int x2, int y2, std::uint32_t net)
    {
        if (x1 != x2 || y1 != y2)
            m_lines.insert({net, std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)});
    }

    void draw_lines()
    {
        for (const auto& [key, vertical] : m_verticals)
        {
            const int x = get_track_x(key.first, key.second);
            add_line(x, vertical.top, x, vertical.bottom, key.second);
        }
        for (const auto& [net, column, y] : m_passings)
            add_line(get_track_x(column, net), y, get_track_x(column + 1, net), y, net);
        for (const SCHEMATIC_GRAPH::EDGE& edge : m_graph.edges)
        {
            const QPoint from = get_box(edge.from).pins[edge.from.pin].position;
            const QPoint to = get_box(edge.to).pins[edge.to.pin].position;
            add_line(from.x(), from.y(), get_track_x(m_column_of_box[edge.from.box] + 1, edge.net), from.y(), edge.net);
            add_line(get_track_x(m_column_of_box[edge.to.box], edge.net), to.y(), to.x(), to.y(), edge.net);
        }
        m_schematic.wires.reserve(m_lines.size());
        for (const auto& [net, x1, y1, x2, y2] : m_lines)
            m_schematic.wires.push_back({QPoint(x1, y1), QPoint(x2, y2), net});
    }

    void draw_junctions()
    {
        for (const auto& [key, vertical] : m_verticals)
        {
            const int x = get_track_x(key.first, key.second);
            for (auto joint = vertical.joints.begin(); joint != vertical.joints.end(); ++joint)
            {
                const int y = joint->first;
                const bool has_both =
                    vertical.joints.count({y, SIDE_LEFT}) + vertical.joints.count({y, SIDE_RIGHT}) == 2;
                const int ways = (has_both ? 2 : 1) + (y > vertical.top ? 1 : 0) + (y < vertical.bottom ? 1 : 0);
                if (ways >= 3 && !(has_both && joint->second == SIDE_RIGHT))
                    m_schematic.junctions.push_back({QPoint(x, y), key.second});
            }
        }
    }

    void finish_bounds()
    {
        QRect bounds;
        for (std::size_t i = 0; i < m_schematic.boxes.size(); ++i)
            bounds |= m_schematic.boxes[i].rect.adjusted(-m_graph.left_margins[i], 0, m_graph.right_margins[i], 0);
        for (const SCHEMATIC::WIRE& wire : m_schematic.wires)
            bounds |= QRect(wire.from, wire.to);
        m_schematic.bounds = bounds.adjusted(-DRAWING_MARGIN, -DRAWING_MARGIN, DRAWING_MARGIN, DRAWING_MARGIN);
    }

    const SCHEMATIC_GRAPH& m_graph;
    const SCHEMATIC_PLACES& m_places;
    const std::vector<std::uint32_t>& m_column_of_box;
    SCHEMATIC& m_schematic;
    std::vector<COLUMN> m_columns;
    std::map<CHANNEL_NET, VERTICAL> m_verticals;
    std::set<std::tuple<std::uint32_t, std::uint32_t, int>> m_passings; ///< net, column and y
    std::set<std::tuple<std::uint32_t, int, int, int, int>> m_lines;
    std::vector<int> m_track_counts; ///< of each channel
    std::vector<int> m_channel_x;
};
} // namespace

void schematic_route(const SCHEMATIC_GRAPH& graph, const SCHEMATIC_PLACES& places,
                     const std::vector<std::uint32_t>& columns, SCHEMATIC* schematic)
{
    ROUTER(graph, places, columns, *schematic).run();
}
