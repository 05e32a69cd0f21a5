#pragma once

#include "netlist_bit_names.h"
#include "property_model.h"

/// What there is to know about one object of a netlist, as groups of properties. Values longer than a screen is wide are
/// given whole: views elide them.

QVector<PROPERTY_MODEL::GROUP> netlist_describe_module(const NETLIST& netlist, const NETLIST_MODULE& module);
QVector<PROPERTY_MODEL::GROUP> netlist_describe_cell(const NETLIST& netlist, const NETLIST_MODULE& module,
                                                     const NETLIST_CELL& cell, const NETLIST_BIT_NAMES& bit_names);
QVector<PROPERTY_MODEL::GROUP> netlist_describe_port(const NETLIST& netlist, const NETLIST_PORT& port,
                                                     const NETLIST_BIT_NAMES& bit_names);
QVector<PROPERTY_MODEL::GROUP> netlist_describe_net(const NETLIST& netlist, const NETLIST_MODULE& module,
                                                    const NETLIST_NET& net);
