// UART, 8 data bits, no parity, one stop bit, with a FIFO on either side.

`default_nettype none

module uart #(
    parameter CLOCK_HZ = 12000000,
    parameter BAUD     = 115200
) (
    input  wire       clk,
    input  wire       reset,
    input  wire       serial_rx,
    output wire       serial_tx,

    output wire [7:0] rx_data,    // oldest received byte, good while rx_valid
    output wire       rx_valid,
    input  wire       rx_take,    // removes it

    input  wire [7:0] tx_data,
    input  wire       tx_push,    // ignored unless tx_ready
    output wire       tx_ready,

    output reg        overrun     // a received byte was lost; stays until reset
);
    wire       tick;              // 8 per bit
    wire [7:0] received;
    wire       received_valid;
    wire       rx_full;
    wire       rx_empty;
    wire [7:0] to_send;
    wire       tx_full;
    wire       tx_empty;
    wire       transmitter_take;

    baud_generator #(.CLOCK_HZ(CLOCK_HZ), .TICK_HZ(BAUD * 8)) u_baud (
        .clk(clk),
        .reset(reset),
        .tick(tick)
    );

    uart_receiver u_receiver (
        .clk(clk),
        .reset(reset),
        .tick(tick),
        .serial(serial_rx),
        .data(received),
        .valid(received_valid)
    );

    sync_fifo #(.WIDTH(8), .LOG2_DEPTH(6)) u_rx_fifo (
        .clk(clk),
        .reset(reset),
        .push(received_valid),
        .push_data(received),
        .full(rx_full),
        .pop(rx_take),
        .pop_data(rx_data),
        .empty(rx_empty)
    );

    sync_fifo #(.WIDTH(8), .LOG2_DEPTH(4)) u_tx_fifo (
        .clk(clk),
        .reset(reset),
        .push(tx_push),
        .push_data(tx_data),
        .full(tx_full),
        .pop(transmitter_take),
        .pop_data(to_send),
        .empty(tx_empty)
    );

    uart_transmitter u_transmitter (
        .clk(clk),
        .reset(reset),
        .tick(tick),
        .data(to_send),
        .valid(!tx_empty),
        .take(transmitter_take),
        .serial(serial_tx)
    );

    always @(posedge clk)
        if (reset)
            overrun <= 1'b0;
        else if (received_valid && rx_full)
            overrun <= 1'b1;

    assign rx_valid = !rx_empty;
    assign tx_ready = !tx_full;
endmodule

`default_nettype wire
