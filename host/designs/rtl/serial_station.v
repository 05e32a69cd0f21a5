// A serial station: a small register file behind a UART.
//
// A host computer writes and reads registers with short commands over the serial line (see command_bridge.v). The
// registers set a two-channel PWM timer and a handful of lamps. Fits an iCE40 HX1K with plenty of room.
//
//   level 1   serial_station
//   level 2   reset_synchroniser  uart  command_bridge  timer_block  lamp_register
//   level 3   baud_generator, uart_receiver, uart_transmitter, sync_fifo (twice);  prescaler, pwm_channel (twice)

`default_nettype none

module serial_station #(
    parameter CLOCK_HZ = 12000000,
    parameter BAUD     = 115200
) (
    input  wire       clk,
    input  wire       reset_button_n,
    input  wire       serial_rx,
    output wire       serial_tx,
    output wire [1:0] pwm,
    output wire       timer_irq,
    output wire [3:0] lamp,
    output wire       lamp_overrun
);
    wire       reset;

    // Received bytes on their way to the bridge, answers on their way out.
    wire [7:0] rx_data;
    wire       rx_valid;
    wire       rx_take;
    wire [7:0] tx_data;
    wire       tx_push;
    wire       tx_ready;

    // The register bus: one master, two slaves, answers in the same cycle.
    wire [5:0] bus_address;
    wire [7:0] bus_write_data;
    wire       bus_write;
    wire       bus_read;
    wire [7:0] timer_read_data;
    wire [7:0] lamp_read_data;
    wire       timer_select = (bus_address[5:4] == 2'b00);
    wire       lamp_select  = (bus_address[5:4] == 2'b01);
    wire [7:0] bus_read_data = timer_select ? timer_read_data
                             : lamp_select  ? lamp_read_data
                             : 8'h00;

    reset_synchroniser u_reset (
        .clk(clk),
        .button_n(reset_button_n),
        .reset(reset)
    );

    uart #(.CLOCK_HZ(CLOCK_HZ), .BAUD(BAUD)) u_uart (
        .clk(clk),
        .reset(reset),
        .serial_rx(serial_rx),
        .serial_tx(serial_tx),
        .rx_data(rx_data),
        .rx_valid(rx_valid),
        .rx_take(rx_take),
        .tx_data(tx_data),
        .tx_push(tx_push),
        .tx_ready(tx_ready),
        .overrun(lamp_overrun)
    );

    command_bridge u_bridge (
        .clk(clk),
        .reset(reset),
        .rx_data(rx_data),
        .rx_valid(rx_valid),
        .rx_take(rx_take),
        .tx_data(tx_data),
        .tx_push(tx_push),
        .tx_ready(tx_ready),
        .bus_address(bus_address),
        .bus_write_data(bus_write_data),
        .bus_write(bus_write),
        .bus_read(bus_read),
        .bus_read_data(bus_read_data)
    );

    timer_block u_timer (
        .clk(clk),
        .reset(reset),
        .select(timer_select),
        .address(bus_address[3:0]),
        .write_data(bus_write_data),
        .write(bus_write),
        .read(bus_read),
        .read_data(timer_read_data),
        .pwm(pwm),
        .irq(timer_irq)
    );

    lamp_register u_lamps (
        .clk(clk),
        .reset(reset),
        .select(lamp_select),
        .write_data(bus_write_data),
        .write(bus_write),
        .read_data(lamp_read_data),
        .lamp(lamp)
    );
endmodule

`default_nettype wire
